import QtQuick
import CartonPick
import CartonPick.Platform

// Says whether a scan will be taken.
Rectangle {
    id: pill

    required property LabelOutlet outlet

    implicitWidth: content.implicitWidth + 32
    implicitHeight: Theme.touch
    radius: height / 2
    color: outlet.textColor === "green" ? Theme.ground.green : Theme.surfaceShaded
    border.width: 2
    border.color: outlet.textColor === "green" ? Theme.ink.green : Theme.line

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 8

        StateIcon {
            anchors.verticalCenter: parent.verticalCenter
            state: pill.outlet.textColor === "green" ? "completed" : "unopened"
            width: 22
            height: 22
        }
        OutletText {
            anchors.verticalCenter: parent.verticalCenter
            outlet: pill.outlet
            color: pill.outlet.textColor === "green" ? Theme.ink.green : Theme.textMuted
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
        }
    }
}
