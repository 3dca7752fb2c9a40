import QtQuick
import QtQuick.Controls.Basic
import CartonPick

// A button: filled for the main actions of a screen, plain for the others. It can be pressed by
// touch, Space or a screen reader, but not by Return, which ends a scanned code.
Button {
    id: button

    property bool filled: false
    property color ink: Theme.accent
    property int borderWidth: filled ? 0 : 2
    property color borderColor: enabled ? ink : Theme.line

    implicitHeight: Theme.touch
    leftPadding: 18
    rightPadding: 18
    topPadding: 0
    bottomPadding: 0
    focusPolicy: Qt.TabFocus
    font.family: Theme.family
    font.pixelSize: Theme.body
    font.weight: Font.DemiBold

    Keys.onReturnPressed: event => event.accepted = true
    Keys.onEnterPressed: event => event.accepted = true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: {
        if (Presses.begin(button)) {
            button.clicked();
        }
    }

    contentItem: PlainText {
        text: button.text
        font: button.font
        horizontalAlignment: Text.AlignHCenter
        color: {
            if (!button.enabled) {
                return Theme.textDisabled;
            }
            return button.filled ? Theme.accentText : button.ink;
        }
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.radius
        color: {
            if (!button.enabled) {
                return Theme.surfaceShaded;
            }
            const rest = button.filled ? button.ink : Theme.surface;
            return button.down ? Qt.darker(rest, 1.2) : rest;
        }
        border.width: button.enabled ? button.borderWidth : 1
        border.color: button.borderColor

        FocusRing {
            visible: button.activeFocus
        }
    }
}
