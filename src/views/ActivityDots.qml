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

            width: 5
            height: 5
            radius: 2.5
            color: Theme.accent

            SequentialAnimation on opacity  {
                running: root.visible
                loops: Animation.Infinite

                PauseAnimation {
                    duration: dot.index * Theme.standardDuration
                }
                NumberAnimation {
                    from: 0.25
                    to: 1
                    duration: Theme.dotsDuration / 2
                    easing.type: Easing.InOutSine
                }
                NumberAnimation {
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
