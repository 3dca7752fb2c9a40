pragma ComponentBehavior: Bound

import QtQuick
import CartonPick

// A table of plain text, one column per part of a cell.
ListView {
    id: list

    required property double rowHeight
    // The names of the cell's parts to show.
    required property list<string> parts

    clip: true
    reuseItems: true
    delegate: Rectangle {
        id: row

        required property var cell

        width: list.width
        height: list.rowHeight

        Row {
            Repeater {
                model: list.parts

                Text {
                    required property string modelData

                    width: list.width / list.parts.length
                    height: list.rowHeight
                    text: row.cell[modelData].text ?? row.cell[modelData]
                    font.family: Theme.family
                    font.pixelSize: Theme.body
                    elide: Text.ElideRight
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
