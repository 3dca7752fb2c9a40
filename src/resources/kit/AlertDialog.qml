pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick

// A modal message or question. It is answered by a touch or Space on a button, or by Escape for the
// cancel button, but never by Return.
ModalPopup {
    id: dialog

    required property string title
    required property string message
    required property list<string> buttons
    required property int cancelButtonIndex

    signal answered(int buttonIndex)

    width: Math.min(540 * Theme.textScale, parent.width - 48)
    height: Math.min(implicitHeight, parent.height - 32)

    contentItem: FocusScope {
        objectName: "alert"
        implicitHeight: parts.implicitHeight
        focus: true
        Keys.onEscapePressed: dialog.answered(dialog.cancelButtonIndex)
        Keys.onReturnPressed: event => event.accepted = true
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title
        Accessible.description: dialog.message

        ColumnLayout {
            id: parts

            anchors.fill: parent
            spacing: 16

            PlainText {
                objectName: "alertTitle"
                Layout.fillWidth: true
                text: dialog.title
                wrapMode: Text.Wrap
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            ScrollPane {
                visible: dialog.message !== ""
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.maximumHeight: implicitHeight

                PlainText {
                    objectName: "alertMessage"
                    text: dialog.message
                    wrapMode: Text.Wrap
                    color: Theme.textMuted
                    Layout.fillWidth: true
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }
            WrapRow {
                id: buttons

                available: parts.width
                Layout.alignment: Qt.AlignRight
                Layout.topMargin: 8
                Layout.fillWidth: !fits

                Repeater {
                    model: dialog.buttons

                    ActionButton {
                        required property int index
                        required property string modelData

                        objectName: "alertButton" + index
                        implicitHeight: Theme.touch + 8
                        Layout.fillWidth: !buttons.fits
                        Layout.preferredWidth: Math.max(140, implicitWidth)
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
