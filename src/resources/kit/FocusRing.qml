import QtQuick
import CartonPick

// Shows where the keyboard is.
Rectangle {
    anchors.fill: parent
    anchors.margins: -4
    radius: Theme.radius + 4
    color: "transparent"
    border.width: 3
    border.color: Theme.focus
}
