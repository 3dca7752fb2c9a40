pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.Platform

// The segments of a segmented control outlet, side by side.
Row {
    id: bar

    required property SegmentedControlOutlet outlet

    objectName: outlet.objectName
    height: Theme.touch
    // Neighbours share a border.
    spacing: -2
    Accessible.role: Accessible.PageTabList
    Accessible.name: "Filter"

    Repeater {
        model: bar.outlet.titles

        Button {
            id: segment

            required property int index
            required property string modelData
            readonly property bool isSelected: bar.outlet.selectedSegmentIndex === index

            objectName: bar.outlet.objectName + index
            width: (bar.width - bar.spacing * (bar.outlet.titles.length - 1)) / bar.outlet.titles.length
            height: bar.height
            focusPolicy: Qt.TabFocus
            text: modelData
            font.family: Theme.family
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
            Keys.onReturnPressed: event => event.accepted = true
            Keys.onEnterPressed: event => event.accepted = true
            onClicked: bar.outlet.touchSegment(index)

            Accessible.role: Accessible.RadioButton
            Accessible.name: modelData
            Accessible.checkable: true
            Accessible.checked: isSelected
            Accessible.onPressAction: bar.outlet.touchSegment(index)

            contentItem: PlainText {
                text: segment.text
                font: segment.font
                color: segment.isSelected ? Theme.accentText : Theme.accent
                horizontalAlignment: Text.AlignHCenter
                Accessible.ignored: true
            }
            background: Rectangle {
                color: {
                    const rest = segment.isSelected ? Theme.accent : Theme.surface;
                    return segment.down ? Qt.darker(rest, 1.15) : rest;
                }
                border.width: 2
                border.color: Theme.accent

                FocusRing {
                    visible: segment.visualFocus
                }
            }
        }
    }
}
