import QtQuick
import CartonPick

// A box state as colour, icon and word.
Row {
    id: chip

    required property string word
    required property color ink

    spacing: 8

    StateIcon {
        objectName: "stateIcon"
        anchors.verticalCenter: parent.verticalCenter
        state: chip.word
    }
    PlainText {
        objectName: "state"
        anchors.verticalCenter: parent.verticalCenter
        text: chip.word
        color: chip.ink
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
    }
}
