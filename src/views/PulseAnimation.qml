import QtQuick
import Vantrel

/// Lets the `strength` of what stands for text that is being made come and go.
SequentialAnimation {
    id: root

    required property Item target

    loops: Animation.Infinite

    NumberAnimation {
        target: root.target
        property: "strength"
        from: 1
        to: 0.45
        duration: Theme.pulseDuration / 2
        easing.type: Easing.InOutSine
    }
    NumberAnimation {
        target: root.target
        property: "strength"
        to: 1
        duration: Theme.pulseDuration / 2
        easing.type: Easing.InOutSine
    }
}
