import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Panes

// Scanning, and the lines of the open box.
FocusScope {
    id: screen

    required property DetailViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        RowLayout {
            spacing: Theme.gap
            Layout.margins: Theme.gap
            Layout.bottomMargin: 4

            EntryField {
                outlet: screen.controller.txtBarcode
                caption: "Item or barcode"
                font.pixelSize: Theme.title
                Layout.fillWidth: true
            }
            Pill {
                outlet: screen.controller.lblScanState
            }
            OutletButton {
                outlet: screen.controller.btnOptions
                onClicked: screen.controller.btnOptionsTouched()
            }
        }
        OutletText {
            outlet: screen.controller.lblSaved
            color: Theme.ink.green
            font.weight: Font.DemiBold
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap + 4
            Layout.rightMargin: Theme.gap
            Layout.preferredHeight: 30
        }
        PickTotals {
            box: screen.controller.lblOpenBox
            picked: screen.controller.lblTotalPick
            ordered: screen.controller.lblTotalOrder
            difference: screen.controller.lblTotalDiff
            Layout.fillWidth: true
            Layout.bottomMargin: 8
        }
        SegmentBar {
            outlet: screen.controller.segmentedControl
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: Theme.gap
        }
        PickTable {
            outlet: screen.controller.tblItems
            emptyText: "No lines to show"
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
