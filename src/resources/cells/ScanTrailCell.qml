import QtQuick
import QtQuick.Layouts
import CartonPick

// A row of the scan trail.
TableRow {
    id: row

    required property int index
    required property var cell
    readonly property color ink: Theme.ink[cell.outcome.textColor]

    rowIndex: index
    ground: Theme.surface
    enabled: table.enabled
    Accessible.name: `${cell.time.text}, ${cell.code.text}, ${cell.outcome.text}`

    topPadding: 5
    bottomPadding: 5
    contentItem: ColumnLayout {
        spacing: 0

        RowLayout {
            spacing: Theme.gap
            Layout.leftMargin: 18
            Layout.rightMargin: 18

            PlainText {
                objectName: "code"
                text: row.cell.code.text
                font.weight: Font.DemiBold
                Layout.fillWidth: true
            }
            PlainText {
                objectName: "time"
                text: row.cell.time.text
                color: Theme.textMuted
            }
        }
        RowLayout {
            spacing: 8
            Layout.leftMargin: 18
            Layout.rightMargin: 18

            Icon {
                name: row.cell.icon
                ink: row.ink
            }
            PlainText {
                objectName: "outcome"
                text: row.cell.outcome.text
                color: row.ink
                font.pixelSize: Theme.small
                font.weight: Font.DemiBold
                Layout.fillWidth: true
            }
        }
    }
}
