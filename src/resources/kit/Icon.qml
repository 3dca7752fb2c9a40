import QtQuick
import CartonPick

// An icon in the colour `ink`.
Image {
    property string name: ""
    property color ink: Theme.textMuted

    width: Math.round(22 * Theme.textScale)
    height: width
    source: name === "" ? "" : `image://icons/${name}/${ink.toString().substring(1)}`
    sourceSize.width: width
    sourceSize.height: height
}
