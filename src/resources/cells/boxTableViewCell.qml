import QtQuick
import QtQuick.Layouts
import CartonPick

// A row of the box list.
TableRow {
    id: row

    required property int index
    required property var cell

    rowIndex: index
    ground: Theme.ground[cell.backgroundColor]
    enabled: table.enabled
    Accessible.name: `Box ${cell.lblBox.text}, picked ${cell.lblPickQty.text}, ordered ${cell.lblOrderQty.text}, ${cell.state}`

    contentItem: RowLayout {
        spacing: 10

        Rectangle {
            color: Theme.ink[row.cell.backgroundColor]
            Layout.preferredWidth: 8
            Layout.fillHeight: true
        }
        PlainText {
            objectName: "lblBox"
            text: row.cell.lblBox.text
            font.weight: Font.DemiBold
            Layout.fillWidth: true
            Layout.minimumWidth: 60
        }
        PlainText {
            objectName: "lblPickQty"
            text: row.cell.lblPickQty.text
            font.weight: Font.Bold
        }
        PlainText {
            text: "/"
            color: Theme.textMuted
        }
        PlainText {
            objectName: "lblOrderQty"
            text: row.cell.lblOrderQty.text
            Layout.minimumWidth: 34
        }
        StateChip {
            word: row.cell.state
            ink: Theme.ink[row.cell.backgroundColor]
            Layout.preferredWidth: 132
        }
        Image {
            source: "../icons/disclosure.svg"
            sourceSize.width: 22
            sourceSize.height: 22
            Layout.rightMargin: 12
        }
    }
}
