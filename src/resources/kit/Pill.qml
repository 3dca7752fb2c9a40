import QtQuick
import CartonPick
import CartonPick.View

// Shows whether scans are accepted; a touch shows the last scans. It grows a few times to draw
// attention.
ActionButton {
    id: pill

    required property LabelOutlet outlet
    readonly property bool isReady: outlet.textColor === "green"

    objectName: "pill"
    ink: isReady ? Theme.ink.green : Theme.textMuted
    text: outlet.text
    leftPadding: 14
    rightPadding: 18
    Accessible.description: "Shows the last scans"

    SequentialAnimation {
        id: growth

        loops: 3

        NumberAnimation {
            target: pill
            property: "scale"
            to: 1.1
            duration: 150
        }
        NumberAnimation {
            target: pill
            property: "scale"
            to: 1
            duration: 150
        }
    }
    Connections {
        target: pill.outlet

        function onAttentionDrawn() {
            growth.restart();
        }
    }

    contentItem: Row {
        spacing: 8

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: pill.isReady ? "completed" : "unopened"
            ink: pill.ink
        }
        OutletText {
            anchors.verticalCenter: parent.verticalCenter
            outlet: pill.outlet
            color: pill.ink
            Accessible.ignored: true
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
        }
    }
    background: Rectangle {
        radius: height / 2
        color: {
            const rest = pill.isReady ? Theme.ground.green : Theme.surfaceShaded;
            return pill.down ? Qt.darker(rest, 1.15) : rest;
        }
        border.width: 2
        border.color: pill.ink

        FocusRing {
            radius: parent.radius + 4
            visible: pill.activeFocus
        }
    }
}
