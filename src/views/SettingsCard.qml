pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A group of settings, its rows below each other.
Rectangle {
    id: root

    default property alias content: rows.data

    implicitHeight: rows.implicitHeight + 2 * rows.y
    radius: Theme.cardRadius
    color: Theme.card
    border.width: Theme.hairlineWidth
    border.color: Theme.line

    Column {
        id: rows

        x: Theme.spaceL + Theme.hairlineWidth
        y: Theme.spaceXl + Theme.hairlineWidth
        width: root.width - x - Theme.spaceXxl - Theme.hairlineWidth
        spacing: 14
    }
}
