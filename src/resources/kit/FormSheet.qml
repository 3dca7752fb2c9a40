import QtQuick
import CartonPick
import CartonPick.View

// A screen on a sheet in the middle; nothing else takes input. It grows with the text, and without a
// size of its own stands upright on an upright tablet.
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
        // By address: the host and its sheets show each other.
        Component.onCompleted: setSource("ViewHost.qml", {
            "controller": sheet.controller,
            "focus": true
        })
    }
}
