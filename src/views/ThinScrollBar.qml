pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// A handle over the content, without a track.
T.ScrollBar {
    id: root

    implicitWidth: root.orientation === Qt.Vertical ? Theme.scrollBarSize : Theme.scrollBarLengthSize
    implicitHeight: root.orientation === Qt.Vertical ? Theme.scrollBarLengthSize : Theme.scrollBarSize
    padding: 2
    Accessible.ignored: true
    visible: root.size < 1.0
    minimumSize: Theme.scrollHandleMinRatio

    contentItem: Rectangle {
        radius: Theme.scrollHandleRadius
        color: root.hovered || root.pressed ? Theme.scrollHandleHover : Theme.scrollHandle
    }
}
