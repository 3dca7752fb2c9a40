import QtQuick
import QtQuick.Layouts
import CartonPick

// A key of the keypad, large enough to be hit without looking.
OutletButton {
    id: key

    signal touched

    onClicked: touched()
    ink: Theme.text
    borderWidth: outlet.borderWidth
    borderColor: Theme.ink.black
    implicitHeight: 72
    Layout.minimumHeight: implicitHeight
    implicitWidth: 96
    contentItem: PlainText {
        text: ({"Minus": "−", "Delete": "⌫"})[key.text] ?? key.text
        font.pixelSize: Theme.value
        font.weight: Font.Bold
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
