import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Picking

// The number of boxes, in total and in each state.
GridLayout {
    id: counters

    required property MasterViewController controller
    readonly property bool isTight: width < 19 * Theme.small

    columns: isTight ? 1 : 4
    columnSpacing: 0
    rowSpacing: 0

    ValueTile {
        outlet: counters.controller.lblBoxesTotalValue
        caption: counters.controller.lblBoxesTotalLabel.text
        captionName: counters.controller.lblBoxesTotalLabel.objectName
        isLine: counters.isTight
        Layout.fillWidth: true
        Layout.preferredWidth: 60
    }
    ValueTile {
        outlet: counters.controller.lblBoxesUnopenedValue
        caption: counters.controller.lblBoxesUnopenedLabel.text
        captionName: counters.controller.lblBoxesUnopenedLabel.objectName
        state: "unopened"
        isLine: counters.isTight
        Layout.fillWidth: true
        Layout.preferredWidth: 94
    }
    ValueTile {
        outlet: counters.controller.lblBoxesCompletedValue
        caption: counters.controller.lblBoxesCompletedLabel.text
        captionName: counters.controller.lblBoxesCompletedLabel.objectName
        state: "completed"
        isLine: counters.isTight
        Layout.fillWidth: true
        Layout.preferredWidth: 100
    }
    ValueTile {
        outlet: counters.controller.lblBoxesIncompleteValue
        caption: counters.controller.lblBoxesIncompleteLabel.text
        captionName: counters.controller.lblBoxesIncompleteLabel.objectName
        state: "incomplete"
        isLine: counters.isTight
        Layout.fillWidth: true
        Layout.preferredWidth: 98
    }
}
