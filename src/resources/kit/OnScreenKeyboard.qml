import QtQuick
import QtQuick.VirtualKeyboard
import CartonPick

// The on-screen keyboard at the bottom of the window, for tablets without a physical keyboard.
Item {
    id: keyboard

    // Returns how far `screen` must move up, in points, so that the keyboard does not cover `item`,
    // a part of `screen`, or the gap below it.
    function heightOver(item, screen) {
        if (item === null || !panel.active) {
            return 0;
        }
        const bottom = item.mapToItem(screen, 0, item.height).y + Theme.gap;
        return Math.max(0, bottom - (screen.height - panel.height));
    }

    InputPanel {
        id: panel

        objectName: "onScreenKeyboard"
        width: parent.width
        onActiveChanged: Presses.changed(null)
        y: active ? keyboard.Window.height - height : keyboard.Window.height
    }
}
