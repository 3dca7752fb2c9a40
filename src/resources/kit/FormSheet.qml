import QtQuick
import CartonPick
import CartonPick.Platform

// A screen on a sheet in the middle; nothing else takes input.
ModalPopup {
    id: sheet

    required property ViewController controller

    width: Math.min(900, parent.width - 32)
    height: Math.min(680, parent.height - 32)
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
