import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Platform

// Picked, ordered and difference, after the open box if there can be one, readable at arm's length.
RowLayout {
    id: totals

    property LabelOutlet box: null
    required property LabelOutlet picked
    required property LabelOutlet ordered
    required property LabelOutlet difference

    Repeater {
        model: (totals.box === null ? [] : [[totals.box, "Box"]]).concat([[totals.picked, "Picked"], [totals.ordered, "Ordered"], [totals.difference, "Difference"]])

        ValueTile {
            required property var modelData

            outlet: modelData[0]
            caption: modelData[1]
            valueSize: 44
            Layout.fillWidth: true
            Layout.preferredWidth: 1
        }
    }
}
