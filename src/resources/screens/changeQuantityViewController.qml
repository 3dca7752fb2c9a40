pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.Picking

// The keypad.
FocusScope {
    id: screen

    required property ChangeQuantityViewController controller

    readonly property bool isUpright: height > width
    readonly property bool hasDelete: controller.btnDelete.enabled

    Keys.onEscapePressed: controller.btnCancelTouched()

    Accessible.role: Accessible.Dialog
    Accessible.name: "Quantity"
    Accessible.description: `${controller.lblItemCode.text}, ${controller.lblItemDescription.text}`

    GridLayout {
        anchors.fill: parent
        anchors.margins: 24
        columns: screen.isUpright ? 1 : 2
        columnSpacing: 28
        rowSpacing: Theme.gap

        ColumnLayout {
            spacing: 4
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.fillHeight: !screen.isUpright

            OutletText {
                outlet: screen.controller.lblItemCode
                caption: "Item Code"
                font.pixelSize: Theme.value
                font.weight: Font.Bold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.small
                Layout.fillWidth: true
            }
            OutletText {
                outlet: screen.controller.lblItemBarcode
                caption: "Barcode"
                color: Theme.textMuted
                Layout.fillWidth: true
            }
            OutletText {
                outlet: screen.controller.lblItemDescription
                caption: "Description"
                wrapMode: Text.Wrap
                maximumLineCount: screen.isUpright ? 2 : 3
                font.pixelSize: Theme.title
                Layout.fillWidth: true
                Layout.topMargin: 4
            }
            Item {
                Layout.fillHeight: true
            }
            PlainText {
                text: "Total"
                color: Theme.textMuted
                Layout.alignment: Qt.AlignHCenter
                Accessible.ignored: true
            }
            OutletText {
                outlet: screen.controller.lblTotalQty
                caption: "Total"
                horizontalAlignment: Text.AlignHCenter
                font.pixelSize: Theme.total
                font.weight: Font.Bold
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Theme.value
                Layout.fillWidth: true
            }
            Item {
                Layout.fillHeight: true
            }
            RowLayout {
                Layout.fillWidth: true

                ValueTile {
                    outlet: screen.controller.lblCurrentQty
                    caption: "Current"
                    valueSize: Theme.heading
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                }
                ValueTile {
                    outlet: screen.controller.lblOrderQty
                    caption: "Ordered"
                    valueSize: Theme.heading
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                }
            }
        }

        ColumnLayout {
            spacing: Theme.gap
            Layout.fillWidth: screen.isUpright
            Layout.preferredWidth: Math.max(400, quantity.implicitWidth)
            Layout.fillHeight: true

            EntryField {
                id: quantity

                outlet: screen.controller.txtNewQty
                caption: "Quantity to add"
                focus: true
                horizontalAlignment: TextInput.AlignRight
                font.pixelSize: Theme.value
                inputMethodHints: Qt.ImhDigitsOnly
                wantsScreenKeyboard: false
                Layout.fillWidth: true
                Layout.preferredHeight: 76
            }
            GridLayout {
                columns: 3
                columnSpacing: Theme.gap
                rowSpacing: Theme.gap
                Layout.fillWidth: true
                Layout.fillHeight: true

                Repeater {
                    model: ["7", "8", "9", "4", "5", "6", "1", "2", "3", "Negative", "0", ...(screen.hasDelete ? ["Delete"] : [])]

                    KeypadKey {
                        required property string modelData
                        readonly property bool isWide: modelData === "0" && !screen.hasDelete

                        outlet: screen.controller["btn" + modelData]
                        onTouched: {
                            if (modelData === "Negative") {
                                screen.controller.btnNegativeTouched();
                            } else if (modelData === "Delete") {
                                screen.controller.btnDeleteTouched();
                            } else {
                                screen.controller.btnNumTouched(outlet);
                            }
                        }
                        Layout.columnSpan: isWide ? 2 : 1
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                        Layout.preferredWidth: isWide ? 2 : 1
                    }
                }
            }
            RowLayout {
                spacing: Theme.gap
                Layout.fillWidth: true

                ActionButton {
                    objectName: "btnCancel"
                    text: "Cancel"
                    Layout.preferredWidth: Math.max(124, implicitWidth)
                    Layout.preferredHeight: Theme.key
                    onClicked: screen.controller.btnCancelTouched()
                }
                ActionButton {
                    objectName: "btnOK"
                    text: "OK"
                    filled: true
                    font.pixelSize: Theme.value
                    Layout.fillWidth: true
                    Layout.preferredHeight: Theme.key
                    onClicked: screen.controller.btnOKTouched()
                }
            }
        }
    }
}
