import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Summary

// The summary of a delivery.
FocusScope {
    id: screen

    required property DeliveryDetailsViewController controller

    Keys.onEscapePressed: controller.btnCloseTouched()

    Accessible.role: Accessible.Pane
    Accessible.name: "Summary"

    Rectangle {
        anchors.fill: parent
        color: Theme.window
        border.width: screen.controller.frame.width > 0 ? 2 : 0
        border.color: Theme.header

        // Blocks touches on the screen below.
        MouseArea {
            anchors.fill: parent
        }
    }

    ScrollPane {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            spacing: Theme.gap
            Layout.margins: Theme.gap

            OutletText {
                outlet: screen.controller.lblDelivery
                caption: "Delivery"
                font.pixelSize: Theme.title
                font.weight: Font.Bold
                wrapMode: Text.Wrap
                Layout.fillWidth: true
            }
            ActionButton {
                objectName: "btnClose"
                text: "Close"
                focus: true
                onClicked: screen.controller.btnCloseTouched()
            }
        }
        PickTotals {
            picked: screen.controller.txtQtyPicked
            ordered: screen.controller.txtQtyOrder
            difference: screen.controller.txtQtyDiff
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: 8
        }
        SegmentBar {
            outlet: screen.controller.segmentedControlStatus
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: Theme.gap
        }
        PickTable {
            outlet: screen.controller.tblPicking
            emptyText: "No lines to show"
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.minimumHeight: minimumHeight
        }
    }
}
