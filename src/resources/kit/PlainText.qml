import QtQuick
import CartonPick

// Text that is never interpreted as markup, because it can come from the network.
Text {
    color: Theme.text
    font.family: Theme.family
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
}
