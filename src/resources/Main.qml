import QtQuick
Window { required property var state; visible: true }
