pragma Singleton

import QtQuick

// All colours, sizes and fonts of the program. No other file contains a colour value.
QtObject {
    // Set by the window from the display settings.
    property bool dark: false
    property double textScale: 1

    readonly property color window: dark ? "#0f161e" : "#e9edf2"
    readonly property color surface: dark ? "#1a232d" : "#ffffff"
    readonly property color surfaceShaded: dark ? "#232e3a" : "#f1f4f8"
    readonly property color line: dark ? "#45525f" : "#c5ced9"
    readonly property color fieldLine: dark ? "#7c8a98" : "#7b8794"
    readonly property color text: dark ? "#eef3f8" : "#131c26"
    readonly property color textMuted: dark ? "#b3bfcb" : "#46535f"
    readonly property color textDisabled: dark ? "#8d9aa7" : "#606c78"
    readonly property color bar: dark ? "#0a1017" : "#17222e"
    readonly property color barText: "#f4f7fa"
    readonly property color header: dark ? "#30404f" : "#35424f"
    readonly property color headerText: "#ffffff"
    readonly property color accent: dark ? "#8ab8ff" : "#1550b8"
    readonly property color accentSoft: dark ? "#22395c" : "#dfe9fb"
    readonly property color accentText: dark ? "#0c1a2e" : "#ffffff"
    readonly property color focus: dark ? "#ffb454" : "#c96a00"
    readonly property color scrim: dark ? "#b3000000" : "#99101820"

    // The controllers' colour names as text and icon colours.
    readonly property var ink: ({
            "clear": "transparent",
            "black": text,
            "blue": accent,
            "red": dark ? "#ffa39b" : "#a81e19",
            "green": dark ? "#86dfa6" : "#0b6430",
            "yellow": dark ? "#f2cf74" : "#6d4a00",
            "grey": textDisabled,
            "lightGrey": line,
            "darkGrey": header
        })
    // The controllers' colour names as background colours.
    readonly property var ground: ({
            "clear": surface,
            "black": text,
            "blue": accentSoft,
            "red": dark ? "#46211f" : "#fbe1de",
            "green": dark ? "#173a2a" : "#d8f1e0",
            "yellow": dark ? "#403414" : "#fff0c4",
            "grey": header,
            "lightGrey": surfaceShaded,
            "darkGrey": header
        })

    // Heights of touch targets, for use with gloves.
    readonly property int touch: Math.max(56, 2 * body)
    readonly property int key: 84

    readonly property int gap: 12
    readonly property int radius: 10

    readonly property string family: "Inter"
    readonly property int small: Math.round(18 * textScale)
    readonly property int body: Math.round(20 * textScale)
    readonly property int title: Math.round(24 * textScale)
    // Large text grows less than textScale.
    readonly property int value: Math.round(34 * (1 + textScale) / 2)
    readonly property int heading: Math.round(44 * (3 + textScale) / 4)
    readonly property int headline: Math.round(52 * (3 + textScale) / 4)
    readonly property int total: 120

    // The width of an item code or a barcode of 14 characters.
    readonly property int codeWidth: 9 * body

    // The height of `lines` lines of text.
    function heightOf(lines, pixelSize) {
        return Math.ceil(lines * 1.21 * pixelSize);
    }
}
