pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The one sign of work in progress.
Row {
    id: root

    spacing: Theme.spaceXs
    Accessible.ignored: true

    Repeater {
        model: 3

        Rectangle {
            id: dot

            required property int index

            property real strength: 0.25

            width: Theme.dotSize
            height: Theme.dotSize
            radius: Theme.dotRadius
            color: Theme.accent
            opacity: Theme.reducesMotion ? Theme.stillOpacity : dot.strength

            SequentialAnimation {
                running: root.visible && !Theme.reducesMotion
                loops: Animation.Infinite

                PauseAnimation {
                    duration: dot.index * Theme.standardDuration
                }
                NumberAnimation {
                    target: dot
                    property: "strength"
                    from: 0.25
                    to: 1
                    duration: Theme.dotsDuration / 2
                    easing.type: Easing.InOutSine
                }
                NumberAnimation {
                    target: dot
                    property: "strength"
                    to: 0.25
                    duration: Theme.dotsDuration / 2
                    easing.type: Easing.InOutSine
                }
                PauseAnimation {
                    duration: (2 - dot.index) * Theme.standardDuration
                }
            }
        }
    }
}
