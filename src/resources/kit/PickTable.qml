pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.View

// A table of item lines with its column titles.
Item {
    id: table

    required property TableViewOutlet outlet
    // Shown when there are no rows.
    property string emptyText: ""
    // The height of the titles and three rows.
    readonly property int minimumHeight: header.height + 3 * list.rowHeight

    Rectangle {
        id: header

        objectName: table.outlet.objectName + "Header"
        width: parent.width
        height: Math.max(Theme.touch, table.outlet.headerHeight, Theme.heightOf(2, Theme.small) + 10)
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
        lines: 2
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        Accessible.name: "Lines"
        delegate: PickTableRow {
            table: list.outlet
            width: list.width
            height: list.rowHeight
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
