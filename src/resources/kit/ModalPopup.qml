import QtQuick
import QtQuick.Templates as T
import CartonPick

// A modal sheet in the middle of the window, over a dimmed background.
T.Popup {
    id: popup

    // Closing returns the keyboard focus to the sheet below.
    Component.onDestruction: {
        close();
        Presses.close(popup);
    }
    onAboutToShow: Presses.open(popup)
    onClosed: Presses.close(popup)
    // The content has an accessible name. Without this, a screen reader would also announce the
    // unnamed dialog around it.
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
