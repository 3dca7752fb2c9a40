import QtQuick
import QtQuick.Controls.Basic
import CartonPick

// Shows, as long as there is more than fits, where one is.
ScrollBar {
    property bool isNeeded: false

    policy: isNeeded ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
    width: 10
    palette.mid: Theme.fieldLine
    palette.dark: Theme.textMuted
}
