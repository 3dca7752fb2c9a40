import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.View

// A row of a table: background, selection and touch. Its content item is a cell.
ItemDelegate {
    id: row

    required property TableViewOutlet table
    required property int rowIndex
    required property color ground
    readonly property bool isMarked: table.selectedRow === row.rowIndex || table.paintedRow === row.rowIndex

    objectName: table.objectName + "Row" + rowIndex
    padding: 0
    focusPolicy: Qt.NoFocus
    onClicked: table.touchRow(row.rowIndex)
    // A screen reader would find a row that the list keeps for reuse.
    ListView.onPooled: {
        visible = false;
        Accessible.ignored = true;
    }
    ListView.onReused: {
        Accessible.ignored = false;
        visible = true;
    }
    Accessible.role: Accessible.ListItem
    Accessible.onPressAction: {
        if (Presses.begin(row)) {
            table.touchRow(row.rowIndex);
        }
    }

    background: Rectangle {
        color: row.down ? Qt.darker(row.ground, 1.08) : row.ground

        Rectangle {
            anchors.fill: parent
            visible: row.isMarked
            color: Theme.accentSoft
            border.width: 3
            border.color: Theme.accent
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: 1
            color: Theme.line
        }
        FocusRing {
            anchors.margins: 1
            radius: 0
            visible: row.ListView.isCurrentItem && row.ListView.view !== null && row.ListView.view.activeFocus
        }
    }
}
