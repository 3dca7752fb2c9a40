pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.Picking

// The outcomes of the last scans.
FocusScope {
    id: screen

    required property ScanTrailViewController controller

    Accessible.role: Accessible.Dialog
    Accessible.name: "Last scans"

    PlainText {
        id: title

        width: parent.width
        height: Theme.touch
        leftPadding: 18
        text: "Last scans"
        font.pixelSize: Theme.title
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    TableList {
        id: scans

        outlet: screen.controller.tblScans
        lines: 2
        anchors.top: title.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        focus: true
        activeFocusOnTab: true
        Accessible.name: "Last scans"
        delegate: ScanTrailCell {
            table: scans.outlet
            width: scans.width
            height: scans.rowHeight
        }
    }
    PlainText {
        anchors.centerIn: scans
        visible: scans.count === 0
        text: "Nothing has been scanned yet."
        color: Theme.textMuted
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
