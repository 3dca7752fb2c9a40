pragma ComponentBehavior: Bound

import QtQuick
import CartonPick

// A message or question above everything. Answered by touching a button, by Space on it, or by
// Escape for the cancel button; never by Return.
ModalPopup {
    id: dialog

    required property string title
    required property string message
    required property list<string> buttons
    required property int cancelButtonIndex

    signal answered(int buttonIndex)

    width: Math.min(540, parent.width - 48)

    contentItem: FocusScope {
        objectName: "alert"
        implicitHeight: childrenRect.height
        focus: true
        Keys.onEscapePressed: dialog.answered(dialog.cancelButtonIndex)
        Keys.onReturnPressed: event => event.accepted = true
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title

        Column {
            width: parent.width
            spacing: 16

            PlainText {
                objectName: "alertTitle"
                width: parent.width
                text: dialog.title
                wrapMode: Text.Wrap
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            PlainText {
                objectName: "alertMessage"
                width: parent.width
                text: dialog.message
                visible: text !== ""
                wrapMode: Text.Wrap
                maximumLineCount: 10
                color: Theme.textMuted
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Row {
                anchors.right: parent.right
                topPadding: 8
                spacing: Theme.gap

                Repeater {
                    model: dialog.buttons

                    ActionButton {
                        required property int index
                        required property string modelData

                        objectName: "alertButton" + index
                        width: Math.max(140, implicitWidth)
                        height: 64
                        text: modelData
                        filled: dialog.buttons.length === 1 || index !== dialog.cancelButtonIndex
                        focus: index === dialog.cancelButtonIndex
                        onClicked: dialog.answered(index)
                    }
                }
            }
        }
    }
}
