import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.View

// The rows of a table outlet. Items exist only for visible rows. The arrow keys move the current
// row and Space touches it.
ListView {
    id: list

    required property TableViewOutlet outlet
    // The number of text lines in a row.
    property int lines: 1
    readonly property int rowHeight: Math.max(Theme.touch, outlet.rowHeight, Theme.heightOf(lines, Theme.body) + 14)
    readonly property bool isScrollable: contentHeight > height

    objectName: outlet.objectName
    model: outlet
    clip: true
    reuseItems: true
    activeFocusOnTab: outlet.enabled && count > 0
    keyNavigationEnabled: true
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    interactive: outlet.enabled
    ScrollBar.vertical: TableScrollBar {
        isNeeded: list.isScrollable
        interactive: list.interactive
    }
    Keys.onSpacePressed: outlet.touchRow(currentIndex)
    onActiveFocusChanged: {
        if (activeFocus && currentIndex < 0 && count > 0) {
            currentIndex = 0;
        }
    }
    Accessible.role: Accessible.List

    Connections {
        target: list.outlet

        function onReloaded() {
            Presses.changed(list);
        }
        function onScrolledToRow(row) {
            list.positionViewAtIndex(row, ListView.Center);
        }
        function onScrolledToTop() {
            list.positionViewAtBeginning();
        }
    }
}
