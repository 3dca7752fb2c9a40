pragma ComponentBehavior: Bound

import QtQuick
import QtQml.Models
import CartonPick
import CartonPick.Platform

// All alerts that wait for an answer, the latest on top.
Instantiator {
    id: alerts

    required property AlertStack stack

    model: stack
    delegate: AlertDialog {
        required property int index

        onAnswered: buttonIndex => alerts.stack.answer(index, buttonIndex)
    }
    onObjectAdded: (index, object) => object.open()
}
