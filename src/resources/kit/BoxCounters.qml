import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Panes

// How many boxes there are, and how far they are.
RowLayout {
    id: counters

    required property MasterViewController controller

    spacing: 0

    ValueTile {
        outlet: counters.controller.lblBoxesTotalValue
        caption: counters.controller.lblBoxesTotalLabel.text
        captionName: counters.controller.lblBoxesTotalLabel.objectName
        Layout.fillWidth: true
        Layout.preferredWidth: 60
    }
    ValueTile {
        outlet: counters.controller.lblBoxesUnopenedValue
        caption: counters.controller.lblBoxesUnopenedLabel.text
        captionName: counters.controller.lblBoxesUnopenedLabel.objectName
        state: "unopened"
        Layout.fillWidth: true
        Layout.preferredWidth: 96
    }
    ValueTile {
        outlet: counters.controller.lblBoxesCompletedValue
        caption: counters.controller.lblBoxesCompletedLabel.text
        captionName: counters.controller.lblBoxesCompletedLabel.objectName
        state: "completed"
        Layout.fillWidth: true
        Layout.preferredWidth: 96
    }
    ValueTile {
        outlet: counters.controller.lblBoxesIncompleteValue
        caption: counters.controller.lblBoxesIncompleteLabel.text
        captionName: counters.controller.lblBoxesIncompleteLabel.objectName
        state: "incomplete"
        Layout.fillWidth: true
        Layout.preferredWidth: 96
    }
}
