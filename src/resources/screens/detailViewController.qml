import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Picking

// The detail pane: the scan field and the lines of the open box.
FocusScope {
    id: screen

    required property DetailViewController controller
    // Above the on-screen keyboard, the lines are more important than the totals and the filter.
    readonly property bool isShort: Qt.inputMethod.visible && height < 20 * Theme.body // qmllint disable

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    ScrollPane {
        anchors.fill: parent
        spacing: 0

        WrapRow {
            Layout.fillWidth: true
            Layout.margins: Theme.gap
            Layout.bottomMargin: 4

            EntryField {
                outlet: screen.controller.txtBarcode
                caption: "Item or barcode"
                font.pixelSize: Theme.title
                Layout.fillWidth: true
            }
            RowLayout {
                spacing: Theme.gap
                Layout.fillWidth: !parent.fits

                Pill {
                    outlet: screen.controller.lblScanState
                    onClicked: screen.controller.scanStateTouched()
                }
                Item {
                    Layout.fillWidth: true
                }
                OutletButton {
                    outlet: screen.controller.btnOptions
                    onClicked: screen.controller.btnOptionsTouched()
                }
            }
        }
        OutletText {
            property bool isAnnounced: true

            outlet: screen.controller.lblSaved
            visible: isAnnounced && !outlet.hidden
            color: Theme.ink.green
            font.weight: Font.DemiBold
            wrapMode: maximumLineCount > 1 ? Text.Wrap : Text.NoWrap
            maximumLineCount: screen.width < 25 * Theme.body ? 2 : 1
            fontSizeMode: Text.Fit
            minimumPixelSize: Theme.small
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap + 4
            Layout.rightMargin: Theme.gap
            Layout.preferredHeight: Theme.heightOf(maximumLineCount, Theme.body) + 5
            Accessible.role: Accessible.Notification
            onTextChanged: Qt.callLater(announce) // qmllint disable

            // A screen reader reads a notification when it becomes visible.
            function announce() {
                isAnnounced = false;
                isAnnounced = true;
            }
        }
        PickTotals {
            box: screen.controller.lblOpenBox
            picked: screen.controller.lblTotalPick
            ordered: screen.controller.lblTotalOrder
            difference: screen.controller.lblTotalDiff
            visible: !screen.isShort
            Layout.fillWidth: true
            Layout.leftMargin: Theme.gap
            Layout.rightMargin: Theme.gap
            Layout.bottomMargin: 8
        }
        SegmentBar {
            outlet: screen.controller.segmentedControl
            visible: !screen.isShort
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
            Layout.minimumHeight: minimumHeight
        }
    }
}
