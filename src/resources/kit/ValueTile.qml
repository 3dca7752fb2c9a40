import QtQuick
import CartonPick
import CartonPick.Platform

// A number that matters, above its caption.
Column {
    id: tile

    required property LabelOutlet outlet
    required property string caption
    // For a caption that is an outlet too.
    property string captionName: ""
    property alias valueSize: value.font.pixelSize
    property string state: ""

    Row {
        anchors.horizontalCenter: parent.horizontalCenter
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
            font.pixelSize: Theme.value
            font.weight: Font.Bold
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Theme.small
        }
    }
    PlainText {
        objectName: tile.captionName
        width: tile.width
        text: tile.caption
        horizontalAlignment: Text.AlignHCenter
        color: Theme.textMuted
        font.pixelSize: Theme.small
        Accessible.ignored: true
    }
}
