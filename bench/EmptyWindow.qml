import QtQuick.Controls.Basic

ApplicationWindow {
    visible: true
    width: 1280
    height: 800
}
