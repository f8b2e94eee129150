pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The line between panes and panel: drag it to share the room anew, double-click it for the default.
Item {
    id: root

    required property bool isVertical

    signal dragged(real distance)
    signal reset

    implicitWidth: Theme.dividerHitSize
    implicitHeight: Theme.dividerHitSize
    Accessible.ignored: true

    Rectangle {
        x: root.isVertical ? root.width / 2 : 0
        y: root.isVertical ? 0 : root.height / 2
        width: root.isVertical ? Theme.hairlineWidth : root.width
        height: root.isVertical ? root.height : Theme.hairlineWidth
        color: Theme.line
    }

    MouseArea {
        property real grip: 0

        anchors.fill: parent
        cursorShape: root.isVertical ? Qt.SplitHCursor : Qt.SplitVCursor
        onPressed: event => grip = root.isVertical ? event.x : event.y
        onPositionChanged: event => root.dragged((root.isVertical ? event.x : event.y) - grip)
        onDoubleClicked: root.reset()
    }
}
