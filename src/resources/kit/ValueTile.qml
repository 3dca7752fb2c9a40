import QtQuick
import CartonPick
import CartonPick.View

// A number above its caption or, with `isLine`, to the right of it. The implicit size does not
// depend on the width, which would be a binding loop in a layout.
Item {
    id: tile

    required property LabelOutlet outlet
    required property string caption
    // The objectName of the caption, if it is an outlet too.
    property string captionName: ""
    property alias valueSize: value.font.pixelSize
    property string state: ""
    property bool isLine: false
    readonly property int iconSpace: state === "" ? 0 : icon.width + 6
    readonly property int valueHeight: Theme.heightOf(1, valueSize)

    implicitWidth: label.implicitWidth
    implicitHeight: isLine ? valueHeight : valueHeight + label.implicitHeight

    StateIcon {
        id: icon

        visible: tile.state !== ""
        state: tile.state
        x: tile.isLine ? 0 : value.x - tile.iconSpace
        y: (tile.valueHeight - height) / 2
    }
    OutletText {
        id: value

        outlet: tile.outlet
        caption: tile.caption
        width: Math.min(implicitWidth, tile.width - tile.iconSpace - (tile.isLine ? label.implicitWidth + Theme.gap : 0))
        height: tile.valueHeight
        x: tile.isLine ? tile.width - width : (tile.width + tile.iconSpace - width) / 2
        font.pixelSize: Theme.value
        font.weight: Font.Bold
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Theme.small
    }
    PlainText {
        id: label

        objectName: tile.captionName
        x: tile.isLine ? tile.iconSpace : 0
        y: tile.isLine ? 0 : tile.valueHeight
        width: tile.isLine ? implicitWidth : tile.width
        height: tile.isLine ? tile.valueHeight : implicitHeight
        text: tile.caption
        horizontalAlignment: tile.isLine ? Text.AlignLeft : Text.AlignHCenter
        color: Theme.textMuted
        font.pixelSize: Theme.small
        Accessible.ignored: true
    }
}
