import QtQuick
import CartonPick

// The icon of a box state: an empty ring, a half-filled ring or a tick.
Icon {
    property string state: ""

    name: state
    ink: Theme.ink[state === "completed" ? "green" : state === "incomplete" ? "red" : "yellow"]
}
