import QtQuick
import QtQuick.Templates as T
import CartonPick
import CartonPick.View

// A small sheet that shows a screen and points at the item that opened it. A touch elsewhere or
// Escape closes it.
ModalPopup {
    id: popover

    required property ViewController presenter
    required property ViewController controller
    required property Item anchorItem

    readonly property point below: anchorItem.mapToItem(parent, 0, anchorItem.height)
    readonly property int distance: 14
    readonly property real roomBelow: parent.height - below.y - distance - 8
    readonly property real roomAbove: below.y - anchorItem.height - distance - 8
    readonly property bool isBelow: roomBelow >= Math.min(wantedHeight, roomAbove)
    // The size grows with the text size.
    readonly property real wantedWidth: Math.max(300, controller.preferredContentSize.width) * Theme.textScale
    readonly property real wantedHeight: Math.max(3 * (Theme.touch + 6), controller.preferredContentSize.height * Theme.textScale) + 12

    x: Math.max(8, Math.min(below.x + anchorItem.width - width, parent.width - width - 8))
    y: isBelow ? below.y + distance : below.y - anchorItem.height - distance - height
    width: Math.min(wantedWidth, parent.width - 16)
    height: Math.min(wantedHeight, isBelow ? roomBelow : roomAbove)
    padding: 6
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    Component.onCompleted: open()
    onClosed: {
        if (presenter.presented === controller) {
            presenter.dismissViewController();
        }
    }
    T.Overlay.modal: Rectangle {
        color: "transparent"
    }

    // Closes when the window is resized or rotated, which moves the anchor.
    readonly property Connections turn: Connections {
        target: popover.parent

        function onWidthChanged() {
            popover.close();
        }

        function onHeightChanged() {
            popover.close();
        }
    }

    background: Item {
        Rectangle {
            x: popover.below.x + popover.anchorItem.width / 2 - popover.x - width / 2
            y: popover.isBelow ? -height / 2 : parent.height - height / 2
            width: 22
            height: 22
            rotation: 45
            color: Theme.surface
            border.width: 2
            border.color: Theme.fieldLine
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.radius
            color: Theme.surface
            border.width: 2
            border.color: Theme.fieldLine
        }
        Rectangle {
            x: popover.below.x + popover.anchorItem.width / 2 - popover.x - width / 2
            y: popover.isBelow ? 2 : parent.height - 12
            width: 26
            height: 10
            color: Theme.surface
        }
    }

    contentItem: Loader {
        focus: true
        // Loaded by URL, because ViewHost and Popover refer to each other.
        Component.onCompleted: setSource("ViewHost.qml", {
            "controller": popover.controller,
            "focus": true
        })
    }
}
