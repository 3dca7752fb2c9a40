import QtQuick
import QtQuick.Layouts
import CartonPick

// A row that becomes a column if it does not fit.
GridLayout {
    id: row

    property real available: width
    readonly property bool fits: wantedWidth() <= available

    columns: fits ? children.length : 1
    columnSpacing: Theme.gap
    rowSpacing: Theme.gap

    function wantedWidth() {
        let sum = -columnSpacing;
        for (let i = 0; i < children.length; ++i) {
            sum += Math.max(children[i].implicitWidth, children[i].Layout.preferredWidth) + columnSpacing;
        }
        return sum;
    }
}
