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

    rightPadding: 12
    contentItem: RowLayout {
        spacing: 10

        Rectangle {
            color: Theme.ink[row.cell.backgroundColor]
            Layout.preferredWidth: 8
            Layout.fillHeight: true
        }
        ColumnLayout {
            spacing: 0
            Layout.fillHeight: false

            RowLayout {
                spacing: 6

                PlainText {
                    objectName: "lblBox"
                    text: row.cell.lblBox.text
                    font.weight: Font.DemiBold
                    fontSizeMode: Text.HorizontalFit
                    minimumPixelSize: Theme.small
                    Layout.fillWidth: true
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
                }
            }
            StateChip {
                word: row.cell.state
                ink: Theme.ink[row.cell.backgroundColor]
            }
        }
        // Where there is no room, the row does without.
        Icon {
            visible: row.width > 15 * Theme.body
            name: "disclosure"
        }
    }
}
