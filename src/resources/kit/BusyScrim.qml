import QtQuick
import CartonPick
import CartonPick.Platform

// Keeps fingers off while long work is under way, and says how far it is.
ModalPopup {
    id: scrim

    required property BusyState busy

    width: Math.min(560, parent.width - 48)
    visible: busy.active

    contentItem: Column {
        objectName: "busy"
        spacing: 20
        Accessible.role: Accessible.Dialog
        Accessible.name: scrim.busy.title

        PlainText {
            objectName: "busyTitle"
            width: parent.width
            text: scrim.busy.title
            font.pixelSize: Theme.title
            font.weight: Font.Bold
        }
        ProgressLine {
            objectName: "busyProgress"
            width: parent.width
            progress: scrim.busy.progress
        }
        PlainText {
            objectName: "busyText"
            width: parent.width
            text: scrim.busy.progressText
            color: Theme.textMuted
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
