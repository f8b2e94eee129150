pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What lies above the content: a card with the shadow that only menus, sheets and alerts have.
Item {
    id: root

    property int radius: Theme.sheetRadius
    property color borderColor: Theme.lineStrong

    Repeater {
        model: [1, 4]

        Rectangle {
            required property int modelData

            x: -1
            y: modelData
            width: root.width + 2
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
        border.color: root.borderColor
    }
}
