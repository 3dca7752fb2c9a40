pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Controls.Basic
import CartonPick
import CartonPick.Gallery

// All components of the screens, on one page.
FocusScope {
    id: screen

    required property GalleryViewController controller

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    TopBar {
        id: bar

        width: parent.width
        title: "Gallery"
    }

    Flickable {
        id: page

        anchors.top: bar.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        contentHeight: sections.height + 2 * Theme.gap
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: TableScrollBar {
            isNeeded: true
        }

        Column {
            id: sections

            x: Theme.gap
            y: Theme.gap
            width: page.width - 3 * Theme.gap
            spacing: Theme.gap

            GallerySection {
                title: "Type"
                width: sections.width

                Repeater {
                    model: [["total", Theme.total], ["heading", Theme.heading], ["value", Theme.value], ["title", Theme.title], ["body", Theme.body], ["small", Theme.small]]

                    PlainText {
                        required property var modelData

                        text: `${modelData[0]} 1234`
                        font.pixelSize: modelData[1]
                    }
                }
            }
            GallerySection {
                title: "Colours"
                width: sections.width

                Repeater {
                    model: ["black", "blue", "red", "green", "yellow", "grey"]

                    Rectangle {
                        id: swatch

                        required property string modelData

                        implicitWidth: name.implicitWidth + 32
                        implicitHeight: Theme.touch
                        radius: Theme.radius
                        color: swatch.modelData === "grey" || swatch.modelData === "black" ? Theme.surface : Theme.ground[swatch.modelData]
                        border.width: 2
                        border.color: Theme.ink[swatch.modelData]

                        PlainText {
                            id: name

                            anchors.centerIn: parent
                            text: swatch.modelData
                            color: Theme.ink[swatch.modelData]
                        }
                    }
                }
            }
            GallerySection {
                title: "Buttons"
                width: sections.width

                OutletButton {
                    outlet: screen.controller.btnPlain
                    filled: true
                    focus: true
                }
                OutletButton {
                    outlet: screen.controller.btnPlain
                }
                OutletButton {
                    outlet: screen.controller.btnWarning
                    filled: true
                }
                OutletButton {
                    outlet: screen.controller.btnDisabled
                }
                OutletButton {
                    outlet: screen.controller.btnDisabled
                    filled: true
                }
                KeypadKey {
                    outlet: screen.controller.btnDigit
                }
                KeypadKey {
                    outlet: screen.controller.btnNegative
                }
            }
            GallerySection {
                title: "Fields"
                width: sections.width

                EntryField {
                    outlet: screen.controller.txtEmpty
                    caption: "Item or barcode"
                    implicitWidth: 15 * Theme.body
                }
                EntryField {
                    outlet: screen.controller.txtFilled
                    caption: "Item or barcode"
                    implicitWidth: 15 * Theme.body
                }
                EntryField {
                    outlet: screen.controller.txtDisabled
                    caption: "Delivery number"
                    implicitWidth: 15 * Theme.body
                }
            }
            GallerySection {
                title: "Segments and pills"
                width: sections.width

                SegmentBar {
                    outlet: screen.controller.segmFilter
                    width: Math.min(36 * Theme.body, page.width - 6 * Theme.gap)
                }
                Pill {
                    outlet: screen.controller.lblReady
                    onClicked: screen.controller.showPopover()
                }
                Pill {
                    outlet: screen.controller.lblNotReady
                    onClicked: screen.controller.showPopover()
                }
            }
            GallerySection {
                title: "States and icons"
                width: sections.width

                Repeater {
                    model: [["unopened", "yellow"], ["completed", "green"], ["incomplete", "red"]]

                    StateChip {
                        required property var modelData

                        height: Theme.touch
                        word: modelData[0]
                        ink: Theme.ink[modelData[1]]
                    }
                }
                Repeater {
                    model: ["unopened", "incomplete", "completed", "loose", "unknown", "refused", "disclosure"]

                    Item {
                        required property string modelData

                        width: icon.width
                        height: Theme.touch

                        Icon {
                            id: icon

                            anchors.centerIn: parent
                            name: parent.modelData
                            ink: Theme.text
                        }
                    }
                }
            }
            GallerySection {
                title: "Progress"
                width: sections.width

                ProgressLine {
                    implicitWidth: 300
                    progress: 0.62
                }
                ProgressLine {
                    implicitWidth: 300
                }
                OutletText {
                    outlet: screen.controller.lblSaved
                    color: Theme.ink.green
                    font.weight: Font.DemiBold
                }
            }
            GallerySection {
                title: "Totals"
                width: sections.width

                PickTotals {
                    width: Math.min(40 * Theme.body, page.width - 6 * Theme.gap)
                    box: screen.controller.lblBox
                    picked: screen.controller.lblPicked
                    ordered: screen.controller.lblOrdered
                    difference: screen.controller.lblDifference
                }
            }
            GallerySection {
                title: "Rows"
                width: sections.width

                TableList {
                    id: boxes

                    outlet: screen.controller.tblBoxes
                    width: Math.min(24 * Theme.body, page.width - 6 * Theme.gap)
                    height: contentHeight
                    Accessible.name: "Boxes"
                    delegate: BoxTableViewCell {
                        table: boxes.outlet
                        width: boxes.width
                        height: boxes.rowHeight
                    }
                }
                PickTable {
                    outlet: screen.controller.tblPicks
                    width: page.width - 6 * Theme.gap
                    height: 4.5 * Theme.touch
                }
            }
            GallerySection {
                title: "Above a screen"
                width: sections.width

                ActionButton {
                    text: "Alert"
                    onClicked: screen.controller.showAlert()
                }
                ActionButton {
                    text: "Question"
                    onClicked: screen.controller.showQuestion()
                }
                ActionButton {
                    text: "Sheet"
                    onClicked: screen.controller.showSheet()
                }
                ActionButton {
                    text: "Popover"
                    onClicked: screen.controller.showPopover()
                }
                ActionButton {
                    text: "Progress"
                    onClicked: screen.controller.showProgress()
                }
            }
        }
    }
}
