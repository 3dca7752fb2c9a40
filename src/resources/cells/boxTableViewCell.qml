import QtQuick
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

    contentItem: Item {
        Rectangle {
            id: stripe

            width: 8
            height: parent.height
            color: Theme.ink[row.cell.backgroundColor]
        }
        // Hidden in a narrow row.
        Icon {
            id: disclosure

            anchors.right: parent.right
            anchors.rightMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            visible: row.width > 15 * Theme.body
            name: "disclosure"
        }
        Item {
            anchors.left: stripe.right
            anchors.leftMargin: 10
            anchors.right: disclosure.visible ? disclosure.left : parent.right
            anchors.rightMargin: disclosure.visible ? 10 : 12
            anchors.verticalCenter: parent.verticalCenter
            height: name.height + state.height

            PlainText {
                id: name

                objectName: "lblBox"
                width: numbers.x - numbers.spacing
                text: row.cell.lblBox.text
                font.weight: Font.DemiBold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.small
            }
            Row {
                id: numbers

                anchors.right: parent.right
                spacing: 6

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
                id: state

                anchors.top: name.bottom
                word: row.cell.state
                ink: Theme.ink[row.cell.backgroundColor]
            }
        }
    }
}
