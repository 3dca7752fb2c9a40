import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.App

// The start screen, which leads to picking, the history, the demo and the display settings.
FocusScope {
    id: screen

    required property StartViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }
    // The background of the heading; the card overlaps its lower edge.
    Rectangle {
        width: parent.width
        height: card.y + 48 - pane.contentY
        color: Theme.bar
    }

    ScrollPane {
        id: pane

        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(560 * Theme.textScale, parent.width - 64)
        height: parent.height
        spacing: 4

        Item {
            Layout.fillHeight: true
        }
        PlainText {
            text: "CartonPick"
            color: Theme.barText
            font.pixelSize: Theme.headline
            font.weight: Font.Bold
            Layout.alignment: Qt.AlignHCenter
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        PlainText {
            text: "Deliveries, carton by carton"
            color: Theme.barText
            Layout.alignment: Qt.AlignHCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Card {
            id: card

            radius: 16
            Layout.fillWidth: true
            Layout.topMargin: 24
            Layout.bottomMargin: Theme.gap
            Layout.preferredHeight: buttons.implicitHeight + 56

            Column {
                id: buttons

                anchors.centerIn: parent
                width: parent.width - 56
                spacing: 18

                ActionButton {
                    objectName: "btnSegueToSplitView"
                    width: parent.width
                    height: 104
                    text: screen.controller.btnPicking.title
                    enabled: screen.controller.btnPicking.enabled
                    filled: true
                    focus: true
                    font.pixelSize: Theme.value
                    onClicked: screen.controller.performSegueWithIdentifier("segueToSplitView")
                }
                ActionButton {
                    objectName: "btnSegueHistory"
                    width: parent.width
                    height: 80
                    text: "History"
                    font.pixelSize: Theme.title
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
                OutletText {
                    outlet: screen.controller.lblStore
                    width: parent.width
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignHCenter
                }
                OutletText {
                    outlet: screen.controller.lblRules
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
        Item {
            Layout.fillHeight: true
        }
    }

    OutletButton {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Theme.gap
        outlet: screen.controller.btnDisplay
        onClicked: screen.controller.btnDisplayTouched()
    }
}
