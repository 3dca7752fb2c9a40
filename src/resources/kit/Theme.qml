pragma Singleton

import QtQuick

// Every colour, size and type of the program. No other file names a colour by its value.
QtObject {
    readonly property color window: "#e9edf2"
    readonly property color surface: "#ffffff"
    readonly property color surfaceShaded: "#f1f4f8"
    readonly property color line: "#c5ced9"
    readonly property color text: "#131c26"
    readonly property color textMuted: "#46535f"
    readonly property color textDisabled: "#76828f"
    readonly property color bar: "#17222e"
    readonly property color barText: "#f4f7fa"
    readonly property color header: "#35424f"
    readonly property color headerText: "#ffffff"
    readonly property color accent: "#1550b8"
    readonly property color accentSoft: "#dfe9fb"
    readonly property color accentText: "#ffffff"
    readonly property color focus: "#e07a00"
    readonly property color scrim: "#99101820"

    // What the controllers' colour names look like as ink ...
    readonly property var ink: ({
            "clear": "transparent",
            "black": text,
            "white": "#ffffff",
            "blue": accent,
            "red": "#a81e19",
            "green": "#0b6430",
            "yellow": "#6d4a00",
            "grey": textDisabled,
            "lightGrey": line,
            "darkGrey": header
        })
    // ... and as the ground of a row or a chip.
    readonly property var ground: ({
            "clear": surface,
            "black": text,
            "white": "#ffffff",
            "blue": accentSoft,
            "red": "#fbe1de",
            "green": "#d8f1e0",
            "yellow": "#fff0c4",
            "grey": header,
            "lightGrey": surfaceShaded,
            "darkGrey": header
        })

    // Heights of what a gloved finger has to hit.
    readonly property int touch: 56
    readonly property int key: 84

    readonly property int gap: 12
    readonly property int radius: 10

    readonly property string family: "Inter"
    readonly property int small: 18
    readonly property int body: 20
    readonly property int title: 24
    readonly property int value: 34
    readonly property int total: 120
}
