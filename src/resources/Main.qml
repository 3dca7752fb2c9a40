import QtQuick
import CartonPick
import CartonPick.Platform

// The window: the root screen, and above all screens the alerts and the scrim of long work.
Window {
    id: window

    required property ApplicationWindowState state

    width: 1280
    height: 800
    minimumWidth: 800
    minimumHeight: 600
    visible: true
    title: "CartonPick"
    color: Theme.window

    // What went away with the keyboard leaves it to the screen.
    onActiveFocusItemChanged: {
        if (activeFocusItem === null || activeFocusItem === contentItem) {
            root.forceActiveFocus();
        }
    }

    ViewHost {
        id: root

        anchors.fill: parent
        focus: true
        controller: window.state.rootViewController
    }

    BusyScrim {
        busy: window.state.busy
    }

    Alerts {
        stack: window.state.alerts
    }
}
