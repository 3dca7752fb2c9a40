import QtQuick
import QtQuick.Templates as T
import CartonPick
import CartonPick.Platform

// A small screen that points at the item that opened it. A touch elsewhere closes it.
ModalPopup {
    id: popover

    required property ViewController presenter
    required property ViewController controller
    required property Item anchorItem

    readonly property point below: anchorItem.mapToItem(parent, 0, anchorItem.height)

    x: Math.max(8, Math.min(below.x + anchorItem.width - width, parent.width - width - 8))
    y: below.y + height + 14 > parent.height ? below.y - anchorItem.height - height - 14 : below.y + 14
    // Larger text needs more of both.
    width: Math.min(Math.max(300, controller.preferredContentSize.width) * Theme.textScale, parent.width - 16)
    height: Math.min(Math.max(3 * (Theme.touch + 6), controller.preferredContentSize.height * Theme.textScale) + 12, parent.height - below.y - 22)
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

    background: Item {
        Rectangle {
            x: popover.below.x + popover.anchorItem.width / 2 - popover.x - width / 2
            y: popover.y > popover.below.y ? -height / 2 : parent.height - height / 2
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
            y: popover.y > popover.below.y ? 2 : parent.height - 12
            width: 26
            height: 10
            color: Theme.surface
        }
    }

    contentItem: Loader {
        focus: true
        // By address: the host and its sheets show each other.
        Component.onCompleted: setSource("ViewHost.qml", {
            "controller": popover.controller,
            "focus": true
        })
    }
}
