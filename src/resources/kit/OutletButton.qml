import QtQuick
import CartonPick
import CartonPick.View

// The button for a button outlet.
ActionButton {
    id: button

    required property ButtonOutlet outlet
    readonly property string meaning: outlet.enabled ? outlet.title : ""

    onMeaningChanged: Presses.changed(button)

    objectName: outlet.objectName
    text: outlet.title
    enabled: outlet.enabled
    ink: Theme.ink[outlet.titleColor]
}
