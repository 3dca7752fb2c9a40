pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick

// What a row of the history shows, and the titles above the columns: one line, or two where that is
// too tight.
RowLayout {
    id: content

    required property var cell
    property color ink: Theme.text
    property bool isHeader: false
    readonly property bool isTight: width < 38 * Theme.body

    spacing: 12

    GridLayout {
        columns: content.isTight ? 2 : 4
        columnSpacing: 12
        rowSpacing: 0
        Layout.leftMargin: 24

        Repeater {
            // The delivery number takes what the others leave.
            model: [["deliveryNo", 0], ["sent", 7], ["dateCreated", 9], ["dateClosed", 9]]

            PlainText {
                required property int index
                required property var modelData
                readonly property bool isFirst: index === 0 || (content.isTight && index === 2)

                objectName: modelData[0]
                text: content.cell[modelData[0]].text
                color: content.ink
                font.pixelSize: content.isHeader || content.isTight && index > 0 ? Theme.small : Theme.body
                font.weight: content.isHeader || index === 0 ? Font.DemiBold : Font.Normal
                Layout.fillWidth: isFirst
                Layout.preferredWidth: isFirst ? 1 : modelData[1] * Theme.body
            }
        }
    }
    Icon {
        opacity: content.isHeader ? 0 : 1
        name: "disclosure"
        Layout.rightMargin: 16
    }
}
