import QtQuick
import CartonPick

// A progress bar from 0 to 1; a moving block while the progress is negative (unknown).
Rectangle {
    id: line

    property double progress: -1

    implicitHeight: 14
    radius: height / 2
    color: Theme.accentSoft
    clip: true
    Accessible.role: Accessible.ProgressBar
    Accessible.name: progress < 0 ? "" : Math.floor(progress * 100) + " %"

    Rectangle {
        height: parent.height
        radius: height / 2
        color: Theme.accent
        width: line.width * (line.progress < 0 ? 0.25 : Math.min(1, line.progress))
        x: wander.running ? wander.offset : 0

        SequentialAnimation {
            id: wander

            property double offset: 0

            running: line.visible && line.progress < 0
            loops: Animation.Infinite

            NumberAnimation {
                target: wander
                property: "offset"
                from: 0
                to: line.width * 0.75
                duration: 900
                easing.type: Easing.InOutQuad
            }
            NumberAnimation {
                target: wander
                property: "offset"
                to: 0
                duration: 900
                easing.type: Easing.InOutQuad
            }
        }
    }
}
