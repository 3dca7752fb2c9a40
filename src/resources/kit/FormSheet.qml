import QtQuick
import CartonPick
import CartonPick.View

// A modal sheet in the middle of the window that shows a screen. Its size is the controller's
// preferred one or a default for the window's orientation, and grows with the text size.
ModalPopup {
    id: sheet

    required property ViewController controller

    readonly property size usual: parent.height > parent.width ? Qt.size(720, 1080) : Qt.size(900, 680)
    readonly property size wanted: controller.preferredContentSize.width > 0 ? controller.preferredContentSize : usual
    readonly property double growth: (1 + Theme.textScale) / 2

    width: Math.min(wanted.width * growth, parent.width - 32)
    height: Math.min(wanted.height * growth, parent.height - 32)
    padding: 0
    Component.onCompleted: open()

    contentItem: Loader {
        focus: true
        // Loaded by URL, because ViewHost and FormSheet refer to each other.
        Component.onCompleted: setSource("ViewHost.qml", {
            "controller": sheet.controller,
            "focus": true
        })
    }
}
