pragma Singleton

import QtQuick

// Presses by a screen reader. They are not window events, so without these checks they would reach
// items below a modal sheet and overtake held key events.
QtObject {
    id: presses

    // The open sheets, the topmost last.
    property var sheets: []

    // Emitted before a press.
    signal begun

    function open(sheet) {
        sheets = sheets.filter(other => other !== sheet).concat([sheet]);
    }

    function close(sheet) {
        sheets = sheets.filter(other => other !== sheet);
    }

    // Announces a press of `item` and returns true if it is allowed now.
    function begin(item) {
        begun();
        return item.enabled && (sheets.length === 0 || isIn(item, sheets[sheets.length - 1]));
    }

    function isIn(item, sheet) {
        while (item !== null && item !== sheet.contentItem) {
            item = item.parent;
        }
        return item !== null;
    }
}
