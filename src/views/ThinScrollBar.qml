pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// A handle over the content, without a track.
T.ScrollBar {
    id: root

    implicitWidth: root.orientation === Qt.Vertical ? 10 : 100
    implicitHeight: root.orientation === Qt.Vertical ? 100 : 10
    padding: 2
    Accessible.ignored: true
    visible: root.size < 1.0
    minimumSize: 0.05

    contentItem: Rectangle {
        radius: 3
        color: root.hovered || root.pressed ? Theme.scrollHandleHover : Theme.scrollHandle
    }
}
