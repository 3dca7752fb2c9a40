import QtQuick
import CartonPick
import CartonPick.View

// The overlay that blocks input during long work and shows the progress.
ModalPopup {
    id: scrim

    required property BusyState busy

    // Input is blocked immediately, but the overlay becomes visible only after a delay, so that it
    // does not flicker during short work.
    property bool isWorthShowing: false

    width: Math.min(560 * Theme.textScale, parent.width - 48)
    visible: busy.active
    opacity: isWorthShowing ? 1 : 0
    onAboutToShow: delay.restart()
    onClosed: {
        delay.stop();
        isWorthShowing = false;
    }
    dim: isWorthShowing

    Timer {
        id: delay

        interval: 250
        onTriggered: scrim.isWorthShowing = true
    }

    contentItem: Column {
        objectName: "busy"
        spacing: 20
        Accessible.role: Accessible.Dialog
        Accessible.name: scrim.busy.title

        PlainText {
            objectName: "busyTitle"
            width: parent.width
            text: scrim.busy.title
            wrapMode: Text.Wrap
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
            visible: text !== ""
            wrapMode: Text.Wrap
            color: Theme.textMuted
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
