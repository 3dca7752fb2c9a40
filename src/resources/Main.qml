import QtQuick
import CartonPick
import CartonPick.View

// The application window: the root screen and, above it, the busy overlay and the alerts.
Window {
    id: window

    required property ApplicationWindowState state

    minimumWidth: 800
    minimumHeight: 600
    title: "CartonPick"
    color: Theme.window

    Component.onCompleted: {
        width = Math.max(minimumWidth, Math.min(state.display.windowSize.width, Screen.width));
        height = Math.max(minimumHeight, Math.min(state.display.windowSize.height, Screen.height));
        if (state.fullScreen) {
            // Needed without a window manager.
            width = Screen.width;
            height = Screen.height;
            showFullScreen();
        } else if (state.display.maximized) {
            showMaximized();
        } else {
            show();
        }
    }
    onWidthChanged: noteResizing()
    onHeightChanged: noteResizing()
    onVisibilityChanged: resizing.restart()
    onClosing: resizing.remember()

    function noteResizing() {
        resizing.restart();
        Presses.changed(null);
    }

    // A window being maximized reports its new size before its new visibility.
    Timer {
        id: resizing

        interval: 200
        onTriggered: remember()

        function remember() {
            const display = window.state.display;
            if (window.visibility === Window.Windowed) {
                display.windowSize = Qt.size(window.width, window.height);
            }
            if (window.visibility === Window.Windowed || window.visibility === Window.Maximized) {
                display.maximized = window.visibility === Window.Maximized;
            }
        }
    }

    Binding {
        target: Theme
        property: "dark"
        value: window.state.display.dark
    }
    Binding {
        target: Theme
        property: "textScale"
        value: window.state.display.textScale
    }

    Connections {
        target: window.state

        function onTapped(place) {
            if (keyboard.covered > 0) {
                keyboard.item.hideAfterTap(place); // qmllint disable
            }
        }
    }
    Connections {
        target: Theme

        // Everything moves.
        function onTextScaleChanged() {
            Presses.changed(null);
        }
    }

    // If the item with the keyboard focus disappears, the root screen gets the focus and passes it
    // to the item that had it last. While another program has the focus, nothing changes.
    onActiveFocusItemChanged: {
        if (active && (activeFocusItem === null || activeFocusItem === contentItem)) {
            root.forceActiveFocus();
        }
    }

    Connections {
        target: Presses

        function onBegun() {
            window.state.press();
        }
        function onChanged(part) {
            window.state.change(part);
        }
    }

    ViewHost {
        id: root

        width: parent.width
        height: parent.height - keyboard.covered
        focus: true
        controller: window.state.rootViewController
    }

    Loader {
        id: keyboard

        readonly property real covered: item === null ? 0 : item.covered // qmllint disable

        width: parent.width
        z: 1
        Component.onCompleted: {
            if (window.state.onScreenKeyboard) {
                source = "kit/OnScreenKeyboard.qml";
            }
        }
    }

    BusyScrim {
        busy: window.state.busy
    }

    Alerts {
        stack: window.state.alerts
    }
}
