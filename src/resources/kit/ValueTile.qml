import QtQuick
import CartonPick
import CartonPick.Platform

// A number that matters, above its caption. Its implicit size does not depend on its width: a layout
// would chase its own tail.
Item {
    id: tile

    required property LabelOutlet outlet
    required property string caption
    // For a caption that is an outlet too.
    property string captionName: ""
    property alias valueSize: value.font.pixelSize
    property string state: ""

    implicitWidth: label.implicitWidth
    implicitHeight: row.height + label.implicitHeight

    Row {
        id: row

        anchors.horizontalCenter: parent.horizontalCenter
        height: Math.ceil(tile.valueSize * 1.22)
        spacing: 6

        StateIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: tile.state !== ""
            state: tile.state
            width: 24
            height: 24
        }
        OutletText {
            id: value

            outlet: tile.outlet
            caption: tile.caption
            width: Math.min(implicitWidth, tile.width - (tile.state !== "" ? 30 : 0))
            height: parent.height
            font.pixelSize: Theme.value
            font.weight: Font.Bold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.small
        }
    }
    PlainText {
        id: label

        objectName: tile.captionName
        anchors.top: row.bottom
        width: tile.width
        text: tile.caption
        horizontalAlignment: Text.AlignHCenter
        color: Theme.textMuted
        font.pixelSize: Theme.small
        Accessible.ignored: true
    }
}
