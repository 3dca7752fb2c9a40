pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.History

// The list of earlier pickings.
FocusScope {
    id: screen

    required property HistoryViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    TopBar {
        id: bar

        width: parent.width
        title: "History"

        ActionButton {
            objectName: "btnBack"
            text: "Back"
            focus: true
            Layout.preferredWidth: Math.max(104, implicitWidth)
            onClicked: screen.controller.performSegueWithIdentifier("returnFromHistoryToStart")
        }
        Item {
            Layout.fillWidth: true
        }
    }
    Rectangle {
        id: header

        objectName: deliveries.objectName + "Header"
        anchors.top: bar.bottom
        width: parent.width
        height: deliveries.rowHeight
        color: Theme.header

        PickHistoryCell {
            id: titles

            anchors.fill: parent
            cell: screen.controller.tblHistoryOverview.header
            ink: Theme.headerText
            isHeader: true
        }
    }
    TableList {
        id: deliveries

        outlet: screen.controller.tblHistoryOverview
        lines: titles.isTight ? 2 : 1
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        Accessible.name: "Deliveries"
        delegate: TableRow {
            id: row

            required property int index
            required property var cell

            rowIndex: index
            ground: Theme.ground[cell.backgroundColor]
            table: deliveries.outlet
            width: deliveries.width
            height: deliveries.rowHeight
            Accessible.name: `Delivery ${cell.deliveryNo.text}, synchronized ${cell.sent.text}, start ${cell.dateCreated.text}, end ${cell.dateClosed.text}`

            contentItem: PickHistoryCell {
                cell: row.cell
            }
        }
    }
    PlainText {
        anchors.centerIn: deliveries
        visible: deliveries.count === 0
        text: "Nothing has been picked yet."
        color: Theme.textMuted
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
