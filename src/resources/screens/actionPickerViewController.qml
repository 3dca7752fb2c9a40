pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.Picking

// The list of actions on the picking.
FocusScope {
    id: screen

    required property ActionPickerViewController controller

    Accessible.role: Accessible.Dialog
    Accessible.name: "Options"

    TableList {
        id: actions

        anchors.fill: parent
        focus: true
        outlet: screen.controller.tableView
        interactive: false
        Accessible.name: "Options"
        delegate: TableRow {
            id: row

            required property int index
            required property string cell

            rowIndex: index
            ground: Theme.surface
            table: actions.outlet
            width: actions.width
            height: actions.rowHeight + 6
            Accessible.name: cell

            contentItem: PlainText {
                leftPadding: 18
                text: row.cell
                font.weight: Font.DemiBold
                Accessible.ignored: true
            }
        }
    }
}
