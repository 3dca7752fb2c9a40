import QtQuick
import QtQuick.Layouts
import CartonPick

// The dark band at the top of a screen: what leads back, and the screen's name.
Rectangle {
    id: bar

    property alias title: title.text
    default property alias content: row.data

    implicitHeight: 72
    color: Theme.bar

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: Theme.gap
        anchors.rightMargin: Theme.gap
        spacing: Theme.gap
    }
    PlainText {
        id: title

        anchors.centerIn: parent
        color: Theme.barText
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
