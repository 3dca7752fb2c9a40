pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.View

// The open box (optional) and the totals picked, ordered and difference, readable at arm's length.
GridLayout {
    id: totals

    property LabelOutlet box: null
    required property LabelOutlet picked
    required property LabelOutlet ordered
    required property LabelOutlet difference
    readonly property bool isTight: width < tiles.count * 6 * Theme.small

    columns: isTight ? 2 : tiles.count
    columnSpacing: isTight ? 4 * Theme.gap : 6
    rowSpacing: 0

    Repeater {
        id: tiles

        model: (totals.box === null ? [] : [[totals.box, "Box"]]).concat([[totals.picked, "Picked"], [totals.ordered, "Ordered"], [totals.difference, "Difference"]])

        ValueTile {
            required property var modelData

            outlet: modelData[0]
            caption: modelData[1]
            valueSize: Theme.heading
            isLine: totals.isTight
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
    }
}
