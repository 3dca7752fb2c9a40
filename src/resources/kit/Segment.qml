import QtQuick
import QtQuick.Templates as T
import CartonPick

// A segment of a segmented control. The selected one is filled and has a tick.
T.RadioButton {
    id: segment

    required property bool isSelected
    readonly property color ink: isSelected ? Theme.accentText : Theme.accent

    signal touched

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.touch
    leftPadding: 10
    rightPadding: 10
    // Draws the focus ring above the neighbouring segments.
    z: activeFocus ? 1 : 0
    focusPolicy: Qt.TabFocus
    font.family: Theme.family
    font.pixelSize: Theme.small
    font.weight: Font.DemiBold
    Keys.onReturnPressed: event => event.accepted = true
    Keys.onEnterPressed: event => event.accepted = true
    checked: isSelected
    onClicked: touched()

    Accessible.name: text
    Accessible.onPressAction: pressFromOutside()
    Accessible.onToggleAction: pressFromOutside()

    function pressFromOutside() {
        if (Presses.begin(segment)) {
            touched();
        }
    }

    contentItem: Item {
        implicitWidth: tick.width + row.spacing + label.implicitWidth

        Row {
            id: row

            anchors.centerIn: parent
            spacing: 6

            Icon {
                id: tick

                anchors.verticalCenter: parent.verticalCenter
                visible: segment.isSelected
                name: "tick"
                ink: segment.ink
            }
            PlainText {
                id: label

                anchors.verticalCenter: parent.verticalCenter
                text: segment.text
                font: segment.font
                color: segment.ink
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        color: {
            const rest = segment.isSelected ? Theme.accent : Theme.surface;
            return segment.down ? Qt.darker(rest, 1.15) : rest;
        }
        border.width: 2
        border.color: Theme.accent

        FocusRing {
            visible: segment.activeFocus
        }
    }
}
