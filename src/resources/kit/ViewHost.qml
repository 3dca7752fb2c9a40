import QtQuick
import CartonPick
import CartonPick.View

// Shows a controller: its screen, its overlay and the controller that it presents.
FocusScope {
    id: host

    required property ViewController controller

    readonly property bool presentsFullScreen: controller.presented !== null && controller.presentationStyle === "fullScreen"

    Item {
        id: faces

        anchors.fill: parent
        visible: !host.presentsFullScreen
        enabled: !flip.running

        transform: Rotation {
            id: turn

            origin.x: faces.width / 2
            origin.y: faces.height / 2
            axis {
                x: 0
                y: 1
                z: 0
            }
        }

        Loader {
            id: screen

            anchors.fill: parent
            focus: true
            enabled: overlay.shown === null || !overlay.coversAll
            Component.onCompleted: setSource("../screens/" + host.controller.identifier + ".qml", {
                "controller": host.controller,
                "objectName": host.controller.identifier,
                "focus": true
            })
        }

        Loader {
            id: overlay

            property ViewController shown: null
            readonly property rect frame: shown === null ? Qt.rect(0, 0, 0, 0) : shown.frame
            readonly property bool coversAll: frame.width === 0 || frame.x + frame.width > host.width || frame.y + frame.height > host.height

            x: coversAll ? 0 : frame.x
            y: coversAll ? 0 : frame.y
            width: coversAll ? host.width : frame.width
            height: coversAll ? host.height : frame.height
            onShownChanged: {
                Presses.changed(host);
                if (shown === null) {
                    source = "";
                    screen.focus = true;
                } else {
                    setSource("../screens/" + shown.identifier + ".qml", {
                        "controller": shown,
                        "objectName": shown.identifier,
                        "focus": true
                    });
                    focus = true;
                }
            }
        }
    }

    Flip {
        id: flip

        turn: turn
        milliseconds: host.controller.flipMilliseconds
        onSwapped: next => overlay.shown = next
    }

    Connections {
        target: host.controller

        function onFlipped(from, to, fromLeft) {
            flip.add(to, fromLeft);
        }
    }

    Loader {
        id: cover

        readonly property ViewController shown: host.presentsFullScreen ? host.controller.presented : null

        anchors.fill: parent
        onShownChanged: {
            Presses.changed(host);
            if (shown === null) {
                source = "";
                screen.focus = true;
            } else {
                setSource("ViewHost.qml", {
                    "controller": shown,
                    "focus": true
                });
                focus = true;
            }
        }
    }

    Loader {
        readonly property bool isSheet: host.controller.presentationStyle === "formSheet"
        readonly property ViewController shown: isSheet ? host.controller.presented : null

        onShownChanged: {
            if (shown === null) {
                source = "";
            } else {
                setSource("FormSheet.qml", {
                    "controller": shown
                });
            }
        }
    }

    Loader {
        readonly property ViewController shown: host.controller.popoverSource !== null ? host.controller.presented : null

        onShownChanged: {
            if (shown === null) {
                source = "";
            } else {
                setSource("Popover.qml", {
                    "presenter": host.controller,
                    "controller": shown,
                    "anchorItem": host.itemOf(host.controller.popoverSource, screen.item)
                });
            }
        }
    }

    // Returns `item` or its descendant that shows `outlet`; null if there is none.
    function itemOf(outlet, item) {
        if (item.outlet === outlet) {
            return item;
        }
        for (let i = 0; i < item.children.length; ++i) {
            const found = itemOf(outlet, item.children[i]);
            if (found !== null) {
                return found;
            }
        }
        return null;
    }
}
