pragma ComponentBehavior: Bound

import QtQuick
import CartonPick

// Contents of a pick table row or header. If it is wide enough, everything is on one line; if it is
// narrower, the barcode is below the item code; if it is narrowest, the description is on the
// second line too.
Item {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false

    readonly property bool isOneLine: width >= 47 * Theme.body
    readonly property bool isStacked: width < 32 * Theme.body
    readonly property int gap: isStacked ? 6 : 12
    readonly property int margin: isStacked ? 8 : 16
    readonly property int half: isOneLine ? height : height / 2
    // Gets narrower only if the item code needs the space.
    readonly property double numberWidth: Math.max(2.5 * Theme.body, Math.min(3.3 * Theme.body, (width - Theme.codeWidth - 2 * margin - 3 * gap) / 3))
    readonly property int size: isHeader ? Theme.small : Theme.body

    PlainText {
        id: item

        objectName: "item"
        x: content.margin
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
        x: content.isOneLine ? item.x + item.width + content.gap : content.margin
        y: content.isOneLine ? 0 : content.half
        width: content.isOneLine ? Theme.codeWidth : 8.8 * Theme.small
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
        x: content.isStacked || content.isOneLine ? barcode.x + barcode.width + content.gap : item.x + item.width + content.gap
        y: content.isStacked ? content.half : 0
        width: (content.isStacked ? content.width - content.margin : numbers.x) - x - content.gap
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
        anchors.rightMargin: content.margin
        height: content.isStacked ? content.half : content.height
        spacing: content.gap

        Repeater {
            model: ["pickqty", "orderqty", "diffqty"]

            PlainText {
                required property string modelData
                readonly property var label: content.cell[modelData]

                objectName: modelData
                width: content.numberWidth
                height: numbers.height
                text: label.text
                color: content.isHeader ? content.ink : Theme.ink[label.textColor]
                font.pixelSize: content.isHeader ? Theme.small : content.isStacked ? Math.round(1.1 * Theme.body) : Theme.title
                font.weight: content.isHeader || modelData === "orderqty" ? Font.DemiBold : Font.Bold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.small
                horizontalAlignment: Text.AlignRight
                verticalAlignment: content.isStacked ? Text.AlignBottom : Text.AlignVCenter
            }
        }
    }
}
