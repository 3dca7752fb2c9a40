pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick

// What a row of the history shows, and the titles above the columns.
RowLayout {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false

    spacing: 12

    Repeater {
        model: [["deliveryNo", 0], ["sent", 140], ["dateCreated", 180], ["dateClosed", 180]]

        PlainText {
            required property var modelData

            objectName: modelData[0]
            text: content.cell[modelData[0]].text
            color: content.ink
            font.pixelSize: content.isHeader ? Theme.small : Theme.body
            font.weight: content.isHeader || modelData[0] === "deliveryNo" ? Font.DemiBold : Font.Normal
            // The delivery number takes what the others leave.
            Layout.fillWidth: modelData[1] === 0
            Layout.preferredWidth: modelData[1]
            Layout.minimumWidth: modelData[1]
            Layout.leftMargin: modelData[0] === "deliveryNo" ? 24 : 0
        }
    }
    Image {
        opacity: content.isHeader ? 0 : 1
        source: "../icons/disclosure.svg"
        sourceSize.width: 22
        sourceSize.height: 22
        Layout.rightMargin: 16
    }
}
