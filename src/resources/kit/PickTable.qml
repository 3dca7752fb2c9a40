pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.Platform

// A table of item lines below its column titles.
Item {
    id: table

    required property TableViewOutlet outlet
    // What stands where there are no rows.
    property string emptyText: ""

    Rectangle {
        id: header

        width: parent.width
        height: Math.max(Theme.touch, table.outlet.headerHeight)
        color: Theme.header

        PickTableCell {
            anchors.fill: parent
            cell: table.outlet.header
            ink: Theme.headerText
            isHeader: true
        }
    }
    TableList {
        id: list

        outlet: table.outlet
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        Accessible.name: "Lines"
        delegate: PickTableRow {
            table: list.outlet
            width: list.width
            height: Math.max(list.rowHeight, 60)
        }
    }
    PlainText {
        anchors.centerIn: list
        visible: list.count === 0
        text: table.emptyText
        color: Theme.textMuted
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
