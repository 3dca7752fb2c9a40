pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick

// What a row of the pick table shows, and the titles above the columns.
RowLayout {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false
    readonly property int size: isHeader ? Theme.small : Theme.body
    // Narrow panes show the barcode below the item code, which keeps the description readable.
    readonly property bool isNarrow: width < 820

    spacing: 12

    ColumnLayout {
        spacing: 0
        Layout.leftMargin: 16
        Layout.preferredWidth: content.isNarrow ? 150 : 130
        Layout.minimumWidth: Layout.preferredWidth
        Layout.maximumWidth: Layout.preferredWidth

        PlainText {
            objectName: "item"
            text: content.cell.item.text
            color: content.ink
            font.pixelSize: content.size
            font.weight: Font.DemiBold
            Layout.fillWidth: true
        }
        PlainText {
            objectName: "barcode"
            visible: content.isNarrow
            text: content.cell.barcode.text
            color: content.isHeader ? content.ink : Theme.textMuted
            font.pixelSize: Theme.small
            Layout.fillWidth: true
        }
    }
    PlainText {
        objectName: "barcode"
        visible: !content.isNarrow
        text: content.cell.barcode.text
        color: content.ink
        font.pixelSize: content.size
        font.weight: content.isHeader ? Font.DemiBold : Font.Normal
        Layout.preferredWidth: 160
        Layout.minimumWidth: Layout.preferredWidth
        Layout.maximumWidth: Layout.preferredWidth
    }
    PlainText {
        objectName: "descr"
        text: content.cell.descr.text
        color: content.ink
        font.pixelSize: content.isHeader || content.isNarrow ? Theme.small : Theme.body
        font.weight: content.isHeader ? Font.DemiBold : Font.Normal
        wrapMode: content.isHeader ? Text.NoWrap : Text.Wrap
        maximumLineCount: 2
        lineHeight: 0.95
        Layout.fillWidth: true
    }
    Repeater {
        model: ["pickqty", "orderqty", "diffqty"]

        PlainText {
            required property string modelData
            readonly property var label: content.cell[modelData]

            objectName: modelData
            text: label.text
            color: content.isHeader ? content.ink : Theme.ink[label.textColor]
            font.pixelSize: content.isHeader ? Theme.small : Theme.title
            font.weight: content.isHeader || modelData === "orderqty" ? Font.DemiBold : Font.Bold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.small
            horizontalAlignment: Text.AlignRight
            Layout.preferredWidth: 66
            Layout.minimumWidth: Layout.preferredWidth
            Layout.maximumWidth: Layout.preferredWidth
            Layout.rightMargin: modelData === "diffqty" ? 20 : 0
        }
    }
}
