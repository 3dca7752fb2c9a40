import QtQuick
import CartonPick
import CartonPick.App

// The two panes: side by side, or stacked in portrait orientation.
FocusScope {
    id: screen

    required property SplitViewController controller
    // The on-screen keyboard takes a part of the height, but does not turn the window.
    readonly property bool isUpright: Window.height > Window.width
    // With large text the counters are stacked, so the master pane can be narrower.
    readonly property int narrowest: Theme.textScale > 1 ? 368 : 372

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ViewHost {
        id: master

        controller: screen.controller.master
        focus: true
        width: screen.isUpright ? parent.width : Math.round(Math.max(screen.narrowest, Math.min(460 * Theme.textScale, parent.width * 0.34)))
        height: screen.isUpright ? Math.round(parent.height * 0.42) : parent.height
    }

    ViewHost {
        controller: screen.controller.detail
        x: screen.isUpright ? 0 : master.width
        y: screen.isUpright ? master.height : 0
        width: parent.width - x
        height: parent.height - y
    }
}
