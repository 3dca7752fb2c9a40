import QtQuick
import CartonPick

// Marks the item with the keyboard focus.
Rectangle {
    anchors.fill: parent
    anchors.margins: -4
    radius: Theme.radius + 4
    color: "transparent"
    border.width: 3
    border.color: Theme.focus
}
