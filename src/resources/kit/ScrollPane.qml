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
    interactive: isScrollable
    clip: isScrollable
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: TableScrollBar {
        isNeeded: pane.isScrollable
    }
    // The linter takes callLater for a value.
    // qmllint disable
    onKeyboardItemChanged: Qt.callLater(reveal)
    onContentHeightChanged: Qt.callLater(reveal)
    onHeightChanged: Qt.callLater(measure)
    onImplicitHeightChanged: Qt.callLater(measure)
    // qmllint enable

    // A binding would loop: the layout finds out what it needs while it is given its height.
    function measure() {
        contentHeight = Math.max(height, implicitHeight);
    }

    // Scrolls what has the keyboard to the middle, if it cannot be seen.
    function reveal() {
        if (!isScrollable || !isPart(keyboardItem)) {
            return;
        }
        const top = keyboardItem.mapToItem(contentItem, 0, 0).y;
        const bottom = top + keyboardItem.height;
        if (top < contentY || bottom > contentY + height) {
            contentY = Math.max(0, Math.min((top + bottom - height) / 2, contentHeight - height));
        }
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
