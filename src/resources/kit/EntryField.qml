import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.Platform

// The field of a text field outlet.
TextField {
    id: field

    required property TextFieldOutlet outlet
    property string caption: ""

    objectName: outlet.objectName
    implicitHeight: Theme.touch
    leftPadding: 16
    rightPadding: 16
    topPadding: 0
    bottomPadding: 0
    text: outlet.text
    enabled: outlet.enabled
    placeholderText: caption
    placeholderTextColor: Theme.textMuted
    color: enabled ? Theme.text : Theme.textDisabled
    font.family: Theme.family
    font.pixelSize: Theme.body
    verticalAlignment: TextInput.AlignVCenter
    selectByMouse: true
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
    validator: EditValidator {
        outlet: field.outlet
        selectionStart: field.selectionStart
        selectionEnd: field.selectionEnd
    }

    onTextEdited: outlet.edit(text)
    onActiveFocusChanged: outlet.firstResponder = activeFocus
    Keys.onReturnPressed: outlet.pressReturn()
    Keys.onEnterPressed: outlet.pressReturn()
    Component.onCompleted: {
        if (outlet.firstResponder) {
            forceActiveFocus();
        }
    }

    Accessible.role: Accessible.EditableText
    Accessible.name: caption

    Connections {
        target: field.outlet

        function onKeyboardRequested() {
            field.forceActiveFocus();
        }
        function onKeyboardResigned() {
            field.focus = false;
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: field.enabled ? Theme.surface : Theme.surfaceShaded
        border.width: field.activeFocus ? 3 : 2
        border.color: field.activeFocus ? Theme.accent : Theme.line
    }
}
