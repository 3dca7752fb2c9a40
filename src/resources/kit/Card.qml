import QtQuick
import CartonPick

// A plain surface that groups items.
Rectangle {
    radius: Theme.radius
    color: Theme.surface
    border.width: 1
    border.color: Theme.line
}
