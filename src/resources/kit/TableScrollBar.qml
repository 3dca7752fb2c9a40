import QtQuick
import QtQuick.Controls.Basic
import CartonPick

// A scroll bar that is always visible while the content does not fit.
ScrollBar {
    property bool isNeeded: false

    policy: isNeeded ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    width: 10
    palette.mid: Theme.fieldLine
    palette.dark: Theme.textMuted
}
