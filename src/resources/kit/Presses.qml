pragma Singleton

import QtQuick

// What a screen reader presses. That is no event of the window: left to itself it would reach what
// lies under a sheet, and overtake keys that are on their way.
QtObject {
    id: presses

    // The sheets that are open, the topmost last.
    property var sheets: []

    // Something is about to be pressed.
    signal begun

    function open(sheet) {
        sheets = sheets.filter(other => other !== sheet).concat([sheet]);
    }

    function close(sheet) {
        sheets = sheets.filter(other => other !== sheet);
    }

    // Whether `item` may be pressed now.
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
