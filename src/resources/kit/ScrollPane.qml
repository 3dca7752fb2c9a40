import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import CartonPick

// A column that can be scrolled where it does not fit. What has the keyboard stays in sight.
Flickable {
    id: pane

    default property alias content: column.data
    property alias spacing: column.spacing
    property int padding: 0
    readonly property bool isScrollable: contentHeight > height
    readonly property Item keyboardItem: Window.activeFocusItem

    implicitHeight: column.implicitHeight + 2 * padding
    contentWidth: width
    contentHeight: Math.max(height, implicitHeight)
    interactive: isScrollable
    clip: isScrollable
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: TableScrollBar {
        isNeeded: pane.isScrollable
    }
    onKeyboardItemChanged: Qt.callLater(reveal)
    onHeightChanged: Qt.callLater(reveal)
    onContentHeightChanged: Qt.callLater(reveal)

    // Scrolls to what has the keyboard, as far as that is needed.
    function reveal() {
        if (!isScrollable || !isPart(keyboardItem)) {
            return;
        }
        const top = keyboardItem.mapToItem(contentItem, 0, 0).y - Theme.gap;
        const bottom = top + keyboardItem.height + 2 * Theme.gap;
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)));
    }

    function isPart(item) {
        while (item !== null && item !== contentItem) {
            item = item.parent;
        }
        return item !== null;
    }

    ColumnLayout {
        id: column

        x: pane.padding
        y: pane.padding
        width: pane.width - 2 * pane.padding
        height: pane.contentHeight - 2 * pane.padding
    }
}
