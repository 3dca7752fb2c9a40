import QtQuick
import CartonPick
import CartonPick.App

// Where the program begins: to the picking, to the history.
FocusScope {
    id: screen

    required property StartViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    Rectangle {
        width: parent.width
        height: parent.height * 0.36
        color: Theme.bar
    }

    Column {
        anchors.centerIn: parent
        width: Math.min(560, parent.width - 64)
        spacing: 28

        Column {
            width: parent.width
            spacing: 4

            PlainText {
                width: parent.width
                text: "CartonPick"
                color: Theme.barText
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: 52
                font.weight: Font.Bold
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            PlainText {
                width: parent.width
                text: "Deliveries, carton by carton"
                color: Theme.barText
                horizontalAlignment: Text.AlignHCenter
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Card {
            width: parent.width
            height: buttons.implicitHeight + 56
            radius: 16

            Column {
                id: buttons

                anchors.centerIn: parent
                width: parent.width - 56
                spacing: 18

                ActionButton {
                    objectName: "btnSegueToSplitView"
                    width: parent.width
                    height: 104
                    text: "Picking"
                    filled: true
                    focus: true
                    font.pixelSize: 32
                    onClicked: screen.controller.performSegueWithIdentifier("segueToSplitView")
                }
                ActionButton {
                    objectName: "btnSegueHistory"
                    width: parent.width
                    height: 80
                    text: "History"
                    font.pixelSize: 26
                    onClicked: screen.controller.performSegueWithIdentifier("segueHistory")
                }
                OutletText {
                    outlet: screen.controller.lblServiceHost
                    caption: "Order service in use"
                    width: parent.width
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                    color: Theme.textMuted
                    font.pixelSize: Theme.small
                }
                OutletButton {
                    outlet: screen.controller.btnDemo
                    width: parent.width
                    visible: outlet.enabled
                    onClicked: screen.controller.btnDemoTouched()
                }
            }
        }
    }
}
