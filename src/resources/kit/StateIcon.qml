import QtQuick

// The icon of a box state: an empty ring, a half full one, a tick.
Image {
    property string state: ""

    source: state === "" ? "" : "../icons/" + state + ".svg"
    sourceSize.width: width
    sourceSize.height: height
}
