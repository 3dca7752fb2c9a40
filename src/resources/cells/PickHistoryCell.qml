import QtQuick
import CartonPick

// Contents of a history row or header, on one line or, if it is narrow, on two.
Item {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false

    readonly property bool isTight: width < 38 * Theme.body
    readonly property int half: isTight ? height / 2 : height
    readonly property int second: isTight ? half : 0
    readonly property int dateWidth: 9 * Theme.body
    readonly property int size: isHeader || isTight ? Theme.small : Theme.body
    readonly property int weight: isHeader ? Font.DemiBold : Font.Normal

    PlainText {
        objectName: "deliveryNo"
        x: 24
        width: sent.x - x - Theme.gap
        height: content.half
        text: content.cell.deliveryNo.text
        color: content.ink
        font.pixelSize: content.isHeader ? Theme.small : Theme.body
        font.weight: Font.DemiBold
    }
    PlainText {
        id: sent

        objectName: "sent"
        x: content.isTight ? closed.x : created.x - width - Theme.gap
        width: 7 * Theme.body
        height: content.half
        text: content.cell.sent.text
        color: content.ink
        font.pixelSize: content.size
        font.weight: content.weight
    }
    PlainText {
        id: created

        objectName: "dateCreated"
        x: content.isTight ? 24 : closed.x - width - Theme.gap
        y: content.second
        width: content.dateWidth
        height: content.half
        text: content.cell.dateCreated.text
        color: content.ink
        font.pixelSize: content.size
        font.weight: content.weight
    }
    PlainText {
        id: closed

        objectName: "dateClosed"
        x: disclosure.x - width - Theme.gap
        y: content.second
        width: content.dateWidth
        height: content.half
        text: content.cell.dateClosed.text
        color: content.ink
        font.pixelSize: content.size
        font.weight: content.weight
    }
    Icon {
        id: disclosure

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        opacity: content.isHeader ? 0 : 1
        name: "disclosure"
    }
}
