import QtQuick
import CartonPick

// A titled card in the gallery. Lays out its children in a flow.
Card {
    id: section

    property string title: ""
    default property alias content: flow.data

    implicitHeight: flow.y + flow.implicitHeight + 16

    PlainText {
        id: heading

        x: 16
        y: 12
        text: section.title
        color: Theme.textMuted
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    Flow {
        id: flow

        anchors.top: heading.bottom
        anchors.topMargin: 10
        x: 16
        width: parent.width - 32
        spacing: Theme.gap
    }
}
