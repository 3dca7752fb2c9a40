import QtQuick
import QtQuick.Templates as T
import CartonPick

// A sheet in the middle of the window, over a scrim; nothing else takes input.
T.Popup {
    id: popup

    // What is closed gives the keyboard to the sheet below.
    Component.onDestruction: {
        close();
        Presses.close(popup);
    }
    onAboutToShow: Presses.open(popup)
    onClosed: Presses.close(popup)
    // What the sheet holds has a name; a dialog without one around it would only be noise.
    Component.onCompleted: contentItem.parent.Accessible.ignored = true

    parent: T.Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    implicitWidth: contentWidth + leftPadding + rightPadding
    implicitHeight: contentHeight + topPadding + bottomPadding
    padding: 28
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }

    background: Rectangle {
        radius: 16
        color: Theme.surface
    }
}
