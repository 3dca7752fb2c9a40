import QtQuick
import QtQuick.VirtualKeyboard
import CartonPick

// A keyboard at the bottom of the window, for tablets without keys.
Item {
    id: keyboard

    // How far the keyboard reaches over `item`, with some air, a part of `screen`, as long as
    // `screen` is not moved.
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
        y: active ? keyboard.Window.height - height : keyboard.Window.height
    }
}
