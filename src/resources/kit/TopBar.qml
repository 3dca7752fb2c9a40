import QtQuick
import QtQuick.Layouts
import CartonPick

// The bar at the top of a screen: its controls and, if it fits, the screen's name.
Rectangle {
    id: bar

    property alias title: title.text
    default property alias content: row.data
    readonly property real leading: row.children.length > 0 ? row.children[0].width : 0

    implicitHeight: Math.max(72, Theme.touch + 16)
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

        x: Math.max((bar.width - width) / 2, bar.leading + 3 * Theme.gap)
        anchors.verticalCenter: parent.verticalCenter
        visible: x + width + Theme.gap <= bar.width
        color: Theme.barText
        font.pixelSize: Theme.title
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
}
