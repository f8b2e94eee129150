pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A sheet that lies over the rest: the card and its shadow, two plain rectangles below it.
Item {
    id: root

    required property int radius

    Repeater {
        model: [1, 4]

        Rectangle {
            required property int modelData

            x: -Theme.hairlineWidth
            y: modelData
            width: root.width + 2 * Theme.hairlineWidth
            height: root.height
            radius: root.radius
            color: Theme.shadow
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: root.radius
        color: Theme.card
        border.width: Theme.hairlineWidth
        border.color: Theme.lineStrong
    }
}
