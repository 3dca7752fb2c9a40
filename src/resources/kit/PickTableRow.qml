import QtQuick
import CartonPick

// A row of a table of item lines.
TableRow {
    id: row

    required property int index
    required property var cell

    rowIndex: index
    ground: Theme.ground[cell.backgroundColor]
    Accessible.name: "%1, %2, %3, picked %4, ordered %5, difference %6".arg(cell.item.text).arg(cell.barcode.text).arg(cell.descr.text).arg(cell.pickqty.text).arg(cell.orderqty.text).arg(cell.diffqty.text)

    contentItem: PickTableCell {
        cell: row.cell
    }
}
