pragma Singleton

import QtQuick

// The order of sheets and presses. A press by a screen reader is not an event of the window: without
// these checks it would reach items below a modal sheet and overtake held key events. A touch is an
// event of the window, which refuses it if the touched part has just changed.
QtObject {
    id: presses

    // The open sheets, the topmost last.
    property var sheets: []

    // Emitted before a press by a screen reader.
    signal begun
    // Emitted when `part` has appeared or a touch on it now does something else; null is the whole
    // window.
    signal changed(Item part)

    function open(sheet) {
        sheets = sheets.filter(other => other !== sheet).concat([sheet]);
        changed(null);
    }

    function close(sheet) {
        if (sheets.includes(sheet)) {
            sheets = sheets.filter(other => other !== sheet);
            changed(null);
        }
    }

    // Announces a press of `item` by a screen reader and returns true if it is allowed now.
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
