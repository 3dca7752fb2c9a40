import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T

// An empty sheet.
Popup {
    x: (parent.width - width) / 2
    y: (parent.height - height) / 2
    width: 720
    height: 600
    modal: true
    focus: true
    T.Overlay.modal: Rectangle {
        color: "#80000000"
    }
    background: Rectangle {
        radius: 16
    }
    Component.onCompleted: open()
}
