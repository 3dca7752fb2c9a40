pragma ComponentBehavior: Bound

import QtQuick
import CartonPick
import CartonPick.View

// All unanswered alerts, the newest on top.
Item {
    id: alerts

    required property AlertStack stack

    Repeater {
        model: alerts.stack

        // A popup finds its window through its parent item.
        Item {
            id: place

            required property int index
            required property string title
            required property string message
            required property list<string> buttons
            required property int cancelButtonIndex

            AlertDialog {
                title: place.title
                message: place.message
                buttons: place.buttons
                cancelButtonIndex: place.cancelButtonIndex
                onAnswered: buttonIndex => alerts.stack.answer(place.index, buttonIndex)
                Component.onCompleted: open()
            }
        }
    }
}
