pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Stands for a line of text that is being made.
Rectangle {
    id: root

    property real strength: 1

    height: Theme.spaceS
    radius: height / 2
    color: Theme.sunken
    opacity: Theme.reducesMotion ? 1 : root.strength
    Accessible.ignored: true

    PulseAnimation {
        target: root
        running: root.visible && !Theme.reducesMotion
    }
}
