import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.View

// The input field for a text field outlet.
TextField {
    id: field

    required property TextFieldOutlet outlet
    property string caption: ""
    // If true, a touch shows the on-screen keyboard. Gaining the focus in another way does not.
    property bool wantsScreenKeyboard: true

    objectName: outlet.objectName
    // The width of the caption, regardless of the text.
    implicitWidth: Math.ceil(metrics.advanceWidth) + leftPadding + rightPadding + 8
    implicitHeight: Theme.touch
    leftPadding: 12
    rightPadding: 12
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
    inputMethodHints: Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase | Qt.ImhPreferNumbers
    validator: EditValidator {
        outlet: field.outlet
        selectionStart: field.selectionStart
        selectionEnd: field.selectionEnd
    }

    activeFocusOnPress: false
    onPressed: {
        forceActiveFocus(Qt.MouseFocusReason);
        if (wantsScreenKeyboard) {
            Qt.inputMethod.show(); // qmllint disable
        }
    }
    onTextEdited: outlet.edit(text)
    onActiveFocusChanged: {
        outlet.firstResponder = activeFocus;
        if (activeFocus) {
            Qt.inputMethod.hide(); // qmllint disable
        }
    }
    Keys.onReturnPressed: outlet.pressReturn()
    Keys.onEnterPressed: outlet.pressReturn()
    Component.onCompleted: {
        if (outlet.firstResponder) {
            forceActiveFocus();
        }
    }

    Accessible.role: Accessible.EditableText
    Accessible.name: caption

    TextMetrics {
        id: metrics

        font: field.font
        text: field.caption
    }
    Connections {
        target: field.outlet

        function onKeyboardRequested() {
            field.forceActiveFocus();
        }
        // The field keeps the focus: the sheet that opens next takes it and returns it when it
        // closes.
        function onKeyboardResigned() {
            Qt.inputMethod.hide(); // qmllint disable
        }
    }

    background: Rectangle {
        radius: Theme.radius
        color: field.enabled ? Theme.surface : Theme.surfaceShaded
        border.width: field.activeFocus ? 3 : 2
        border.color: field.activeFocus ? Theme.accent : Theme.fieldLine
    }
}
