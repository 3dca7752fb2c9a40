import QtQuick
import CartonPick

// A row of a table of item lines.
TableRow {
    id: row

    required property int index
    required property var cell

    rowIndex: index
    ground: Theme.ground[cell.backgroundColor]
    Accessible.name: `${cell.item.text}, ${cell.barcode.text}, ${cell.descr.text}, picked ${cell.pickqty.text}, ordered ${cell.orderqty.text}, difference ${cell.diffqty.text}`

    contentItem: PickTableCell {
        cell: row.cell
    }
}
