import QtQuick
import QtQuick.Layouts
import CartonPick
import CartonPick.App

// The display settings of this device.
FocusScope {
    id: screen

    required property DisplayViewController controller

    Keys.onEscapePressed: controller.dismissViewController()

    Accessible.role: Accessible.Dialog
    Accessible.name: "Display"

    ScrollPane {
        anchors.fill: parent
        padding: 28
        spacing: Theme.gap

        PlainText {
            text: "Display"
            font.pixelSize: Theme.title
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        PlainText {
            text: "Theme"
            color: Theme.textMuted
            Layout.topMargin: Theme.gap
            Accessible.ignored: true
        }
        SegmentBar {
            outlet: screen.controller.segmTheme
            Accessible.name: "Theme"
            Layout.fillWidth: true
        }
        PlainText {
            text: "Text size"
            color: Theme.textMuted
            Layout.topMargin: Theme.gap
            Accessible.ignored: true
        }
        SegmentBar {
            outlet: screen.controller.segmTextSize
            Accessible.name: "Text size"
            Layout.fillWidth: true
        }
        Item {
            Layout.fillHeight: true
        }
        ActionButton {
            objectName: "btnDone"
            text: "Done"
            filled: true
            focus: true
            Layout.alignment: Qt.AlignRight
            Layout.preferredWidth: Math.max(160, implicitWidth)
            onClicked: screen.controller.dismissViewController()
        }
    }
}
