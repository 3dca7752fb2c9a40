import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import CartonPick
import CartonPick.Picking

// The header data of the delivery, and a busy indicator during the lookup.
GridLayout {
    id: header

    required property MasterViewController controller

    columns: 2
    columnSpacing: Theme.gap
    rowSpacing: 2

    Repeater {
        model: [header.controller.lblCustomerName, header.controller.lblBrand, header.controller.lblCreationDate, header.controller.lblShipmentDate]

        OutletText {
            required property var modelData

            outlet: modelData
            wrapMode: Text.Wrap
            maximumLineCount: 2
            font.pixelSize: Theme.small
            Layout.fillWidth: true
            Layout.columnSpan: 2
        }
    }

    BusyIndicator {
        objectName: header.controller.activityIndicator.objectName
        visible: header.controller.activityIndicator.animating
        running: visible
        palette.dark: Theme.accent
        Layout.preferredWidth: 40
        Layout.preferredHeight: 40
        Accessible.ignored: true
    }
    PlainText {
        visible: !header.controller.lblLookup.hidden
        text: header.controller.lblLookup.text
        color: Theme.textMuted
        font.pixelSize: Theme.small
        wrapMode: Text.Wrap
        Layout.fillWidth: true
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
