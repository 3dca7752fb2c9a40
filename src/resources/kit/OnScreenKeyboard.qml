import QtQuick
import QtQuick.VirtualKeyboard
import CartonPick

// The on-screen keyboard at the bottom of the window, for tablets without a physical keyboard.
Item {
    id: keyboard

    // The height of the window's lower part that the keyboard covers.
    readonly property real covered: panel.active ? panel.height : 0

    // Hides the keyboard after a tap beside it, except in the field that is typed into.
    function hideAfterTap(place) {
        const field = Window.activeFocusItem;
        const isInField = field !== null && field.contains(field.mapFromItem(null, place.x, place.y));
        if (place.y < panel.y && !isInField) {
            Qt.inputMethod.hide(); // qmllint disable
        }
    }

    InputPanel {
        id: panel

        objectName: "onScreenKeyboard"
        width: parent.width - side.width
        onActiveChanged: Presses.changed(null)
        y: active ? keyboard.Window.height - height : keyboard.Window.height
    }
    Rectangle {
        id: side

        anchors.right: parent.right
        y: panel.y
        width: hideKey.width + 12
        height: panel.height
        visible: panel.active
        color: Theme.bar

        ActionButton {
            id: hideKey

            x: 6
            y: 6
            objectName: "btnHideKeyboard"
            text: "Hide"
            focusPolicy: Qt.NoFocus
            leftPadding: 8
            rightPadding: 8
            font.pixelSize: Theme.small
            Accessible.name: "Hide keyboard"
            onClicked: Qt.inputMethod.hide() // qmllint disable
        }
    }
}
