import QtQuick
import CartonPick
import CartonPick.View

// The button for a button outlet.
ActionButton {
    required property ButtonOutlet outlet

    objectName: outlet.objectName
    text: outlet.title
    enabled: outlet.enabled
    ink: Theme.ink[outlet.titleColor]
}
