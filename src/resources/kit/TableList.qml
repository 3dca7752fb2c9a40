import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.Platform

// The rows of a table outlet. Only visible rows exist. The keyboard moves with the arrow keys and
// touches with Space.
ListView {
    id: list

    required property TableViewOutlet outlet
    readonly property int rowHeight: Math.max(Theme.touch, outlet.rowHeight)

    objectName: outlet.objectName
    model: outlet
    clip: true
    reuseItems: true
    activeFocusOnTab: outlet.enabled
    keyNavigationEnabled: true
    currentIndex: -1
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ScrollBar {
        policy: list.contentHeight > list.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        width: 10
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

        function onScrolledToRow(row) {
            list.positionViewAtIndex(row, ListView.Center);
        }
        function onScrolledToTop() {
            list.positionViewAtBeginning();
        }
    }
}
