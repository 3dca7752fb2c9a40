import QtQuick
import CartonPick.View

// The flip animation: turns a view over and swaps its content halfway, when it is seen edge-on.
// Flips added while one is running are queued.
SequentialAnimation {
    id: flip

    required property Rotation turn
    required property int milliseconds
    property var waiting: []
    property ViewController next: null
    property int sign: 1

    signal swapped(ViewController next)

    function add(next, fromLeft) {
        waiting.push({
            "next": next,
            "sign": fromLeft ? 1 : -1
        });
        if (!running) {
            begin();
        }
    }

    function begin() {
        const first = waiting.shift();
        next = first.next;
        sign = first.sign;
        start();
    }

    onFinished: {
        if (waiting.length > 0) {
            begin();
        }
    }

    NumberAnimation {
        target: flip.turn
        property: "angle"
        from: 0
        to: flip.sign * 90
        duration: flip.milliseconds / 2
        easing.type: Easing.InQuad
    }
    ScriptAction {
        script: flip.swapped(flip.next)
    }
    NumberAnimation {
        target: flip.turn
        property: "angle"
        from: flip.sign * -90
        to: 0
        duration: flip.milliseconds / 2
        easing.type: Easing.OutQuad
    }
}
