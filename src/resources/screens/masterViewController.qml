pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Picking

// The master pane: the delivery, the box counters and the boxes.
FocusScope {
    id: screen

    required property MasterViewController controller
    readonly property bool isWide: width > 30 * Theme.body
    readonly property bool isUpright: width >= Window.width

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }
    Rectangle {
        anchors.right: parent.right
        visible: !screen.isUpright
        width: 1
        height: parent.height
        color: Theme.line
    }

    TopBar {
        id: bar

        width: parent.width
        title: screen.controller.lblPickedDelivery.hidden ? "CartonPick" : ""

        OutletButton {
            outlet: screen.controller.btnClose
            Layout.preferredWidth: Math.max(104, implicitWidth)
            onClicked: screen.controller.performSegueWithIdentifier("returnFromPickingToStart")
        }
        // In sight during the whole picking: the field below may contain another number.
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            OutletText {
                anchors.fill: parent
                outlet: screen.controller.lblPickedDelivery
                caption: "Delivery being picked"
                color: Theme.barText
                wrapMode: Text.Wrap
                maximumLineCount: 2
                fontSizeMode: Text.Fit
                minimumPixelSize: Theme.small
                font.pixelSize: Theme.title
                font.weight: Font.DemiBold
            }
        }
    }

    ScrollPane {
        anchors.fill: parent
        anchors.topMargin: bar.height

        GridLayout {
            Layout.topMargin: Theme.gap
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            columns: screen.isWide ? 2 : 1
            columnSpacing: Theme.gap * 2
            rowSpacing: Theme.gap

            ColumnLayout {
                Layout.fillWidth: true
                Layout.fillHeight: false
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignTop
                spacing: Theme.gap

                WrapRow {
                    columnSpacing: 8
                    Layout.fillWidth: true

                    EntryField {
                        outlet: screen.controller.txtDeliveryNo
                        caption: "Delivery number"
                        Layout.fillWidth: true
                    }
                    OutletButton {
                        outlet: screen.controller.btnSearch
                        filled: true
                        Layout.fillWidth: !parent.fits
                        Layout.preferredWidth: Math.max(112, implicitWidth)
                        onClicked: screen.controller.btnSearchOrderNoTouched()
                    }
                }
                DeliveryHeader {
                    controller: screen.controller
                    visible: !screen.controller.lblCustomerName.hidden || screen.controller.activityIndicator.animating
                    Layout.fillWidth: true
                    Layout.fillHeight: false
                }
                WrapRow {
                    columnSpacing: 8
                    Layout.fillWidth: true

                    OutletButton {
                        outlet: screen.controller.btnPicking
                        filled: true
                        Layout.fillWidth: true
                        onClicked: screen.controller.btnPickingTouched()
                    }
                    OutletButton {
                        outlet: screen.controller.btnReloadItems
                        Layout.fillWidth: !parent.fits
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
                    lines: 2
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    Layout.minimumHeight: 3 * rowHeight
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
}
