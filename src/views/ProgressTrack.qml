pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// How much of a piece of work is done.
Rectangle {
    id: root

    required property string label
    required property real progress ///< From 0 to 1.
    property string progressText: ""

    implicitHeight: Theme.bulletSize
    radius: height / 2
    color: Theme.sunken
    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.label
    Accessible.description: root.progressText

    Rectangle {
        width: Math.max(root.height, root.width * Math.min(1, root.progress))
        height: root.height
        radius: root.radius
        color: Theme.accent
    }
}
