pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.View

// The segments of a segmented control outlet: in one row, or in two columns if they do not fit.
Grid {
    id: bar

    required property SegmentedControlOutlet outlet
    readonly property bool fits: segments.widest() * segments.count <= width

    objectName: outlet.objectName
    columns: fits ? segments.count : 2
    // Neighbouring segments share a border.
    spacing: -2
    Accessible.role: Accessible.Grouping
    Accessible.name: "Filter"

    Repeater {
        id: segments

        model: bar.outlet.titles

        Segment {
            required property int index
            required property string modelData

            objectName: bar.outlet.objectName + index
            width: (bar.width - bar.spacing * (bar.columns - 1)) / bar.columns
            text: modelData
            isSelected: bar.outlet.selectedSegmentIndex === index
            onTouched: bar.outlet.touchSegment(index)
        }

        function widest() {
            let width = 0;
            for (let i = 0; i < count; ++i) {
                width = Math.max(width, itemAt(i).implicitWidth);
            }
            return width;
        }
    }
}
