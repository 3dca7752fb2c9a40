pragma ComponentBehavior: Bound

import QtQuick
import CartonPick

// What a row of the pick table shows, and the titles above the columns. Where there is room,
// everything stands in one line; in less the barcode stands below the item code; in little the
// description does, too.
Item {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false

    readonly property bool isOneLine: width >= 47 * Theme.body
    readonly property bool isStacked: width < 31 * Theme.body
    readonly property int gap: isStacked ? 8 : 12
    readonly property int half: isOneLine ? height : height / 2
    readonly property int size: isHeader ? Theme.small : Theme.body

    PlainText {
        id: item

        objectName: "item"
        x: 16
        width: content.isStacked ? numbers.x - x - content.gap : Theme.codeWidth
        height: content.half
        text: content.cell.item.text
        color: content.ink
        font.pixelSize: content.size
        font.weight: Font.DemiBold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.small
        verticalAlignment: content.isOneLine ? Text.AlignVCenter : Text.AlignBottom
    }
    PlainText {
        id: barcode

        objectName: "barcode"
        x: content.isOneLine ? item.x + item.width + content.gap : 16
        y: content.isOneLine ? 0 : content.half
        width: Theme.codeWidth
        height: content.half
        text: content.cell.barcode.text
        color: content.isHeader || content.isOneLine ? content.ink : Theme.textMuted
        font.pixelSize: content.isOneLine ? content.size : Theme.small
        font.weight: content.isHeader ? Font.DemiBold : Font.Normal
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.small
        verticalAlignment: content.isOneLine ? Text.AlignVCenter : Text.AlignTop
    }
    PlainText {
        objectName: "descr"
        x: barcode.x + barcode.width + content.gap
        y: content.isStacked ? content.half : 0
        width: (content.isStacked ? content.width - 20 : numbers.x) - x - content.gap
        height: content.isStacked ? content.half : content.height
        text: content.cell.descr.text
        color: content.ink
        font.pixelSize: content.isOneLine ? content.size : Theme.small
        font.weight: content.isHeader ? Font.DemiBold : Font.Normal
        wrapMode: content.isHeader || content.isStacked ? Text.NoWrap : Text.Wrap
        maximumLineCount: content.isStacked ? 1 : 2
        lineHeight: content.isStacked ? 1 : 0.95
        verticalAlignment: content.isStacked ? Text.AlignTop : Text.AlignVCenter
    }
    Row {
        id: numbers

        anchors.right: parent.right
        anchors.rightMargin: 20
        height: content.isStacked ? content.half : content.height
        spacing: content.gap

        Repeater {
            model: ["pickqty", "orderqty", "diffqty"]

            PlainText {
                required property string modelData
                readonly property var label: content.cell[modelData]

                objectName: modelData
                width: (content.isStacked ? 2.5 : 3.3) * Theme.body
                height: numbers.height
                text: label.text
                color: content.isHeader ? content.ink : Theme.ink[label.textColor]
                font.pixelSize: content.isHeader ? Theme.small : Theme.title
                font.weight: content.isHeader || modelData === "orderqty" ? Font.DemiBold : Font.Bold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.small
                horizontalAlignment: Text.AlignRight
                verticalAlignment: content.isStacked ? Text.AlignBottom : Text.AlignVCenter
            }
        }
    }
}
