import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import CartonPick

// A column that scrolls if it does not fit. The item with the keyboard focus stays visible; while
// the on-screen keyboard is open, it is at the top, so that what is below it is visible too.
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
    // callLater is not a function for qmllint.
    // qmllint disable
    onKeyboardItemChanged: Qt.callLater(reveal)
    onContentHeightChanged: Qt.callLater(reveal)
    onHeightChanged: Qt.callLater(measure)
    onImplicitHeightChanged: Qt.callLater(measure)
    // qmllint enable

    // Not a binding, because it would loop: the layout computes its implicit height while its
    // height is being set.
    function measure() {
        contentHeight = Math.max(height, implicitHeight);
        reveal();
    }

    // Scrolls the item with the keyboard focus to the middle if it is not fully visible, or to the
    // top above the on-screen keyboard.
    function reveal() {
        if (!isScrollable || !isPart(keyboardItem)) {
            return;
        }
        const top = keyboardItem.mapToItem(contentItem, 0, 0).y;
        const bottom = top + keyboardItem.height;
        if (Qt.inputMethod.visible) { // qmllint disable
            scrollTo(top - Theme.gap);
        } else if (top < contentY || bottom > contentY + height) {
            scrollTo((top + bottom - height) / 2);
        }
    }

    function scrollTo(y) {
        contentY = Math.max(0, Math.min(y, contentHeight - height));
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
