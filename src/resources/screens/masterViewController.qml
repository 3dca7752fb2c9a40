pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Panes

// The delivery, its counters and its boxes.
FocusScope {
    id: screen

    required property MasterViewController controller
    readonly property bool isWide: width > 600

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }
    Rectangle {
        anchors.right: parent.right
        visible: !screen.isWide
        width: 1
        height: parent.height
        color: Theme.line
    }

    TopBar {
        id: bar

        width: parent.width
        title: "CartonPick"

        OutletButton {
            outlet: screen.controller.btnClose
            Layout.preferredWidth: 104
            onClicked: screen.controller.performSegueWithIdentifier("returnFromPickingToStart")
        }
        Item {
            Layout.fillWidth: true
        }
    }

    GridLayout {
        anchors.fill: parent
        anchors.topMargin: bar.height + Theme.gap
        anchors.leftMargin: Theme.gap
        anchors.rightMargin: Theme.gap
        columns: screen.isWide ? 2 : 1
        columnSpacing: Theme.gap * 2
        rowSpacing: Theme.gap

        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: false
            Layout.preferredWidth: 1
            Layout.alignment: Qt.AlignTop
            spacing: Theme.gap

            RowLayout {
                spacing: 8

                EntryField {
                    outlet: screen.controller.txtDeliveryNo
                    caption: "Delivery number"
                    Layout.fillWidth: true
                }
                OutletButton {
                    outlet: screen.controller.btnSearch
                    filled: true
                    Layout.preferredWidth: 112
                    onClicked: screen.controller.btnSearchOrderNoTouched()
                }
            }
            DeliveryHeader {
                controller: screen.controller
                visible: !screen.controller.lblCustomerName.hidden || screen.controller.activityIndicator.animating
                Layout.fillWidth: true
                Layout.fillHeight: false
            }
            RowLayout {
                spacing: 8

                OutletButton {
                    outlet: screen.controller.btnPicking
                    filled: true
                    Layout.fillWidth: true
                    onClicked: screen.controller.btnPickingTouched()
                }
                OutletButton {
                    outlet: screen.controller.btnReloadItems
                    onClicked: screen.controller.btnReloadItemsTouched()
                }
            }
            BoxCounters {
                controller: screen.controller
                Layout.fillWidth: true
                Layout.fillHeight: false
            }
        }

        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 1
            spacing: 0

            EntryField {
                outlet: screen.controller.txtBox
                caption: "Box"
                Layout.fillWidth: true
                Layout.bottomMargin: Theme.gap
            }
            TableList {
                id: boxes

                outlet: screen.controller.tblBoxes
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.leftMargin: -Theme.gap
                Layout.rightMargin: -Theme.gap
                Accessible.name: "Boxes"
                delegate: BoxTableViewCell {
                    table: boxes.outlet
                    width: boxes.width
                    height: boxes.rowHeight
                }
            }
        }
    }
}
