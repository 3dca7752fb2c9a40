import QtQuick
import CartonPick
import CartonPick.View

// The text for a label outlet. With a caption, a screen reader reads the text as a value described
// by the caption.
PlainText {
    required property LabelOutlet outlet
    property string caption: ""

    objectName: outlet.objectName
    text: outlet.text
    color: Theme.ink[outlet.textColor]
    visible: !outlet.hidden

    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: caption
    Accessible.ignored: text === ""
}
