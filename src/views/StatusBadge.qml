pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The letter of a file's status on its colour.
Rectangle {
    id: root

    required property string status

    width: Theme.badgeSize
    height: Theme.badgeSize
    radius: Theme.badgeRadius
    color: root.status === "A" ? Theme.badgeAdded : root.status === "D" ? Theme.badgeDeleted : Theme.badgeModified

    PlainLabel {
        anchors.centerIn: parent
        text: root.status
        font: Theme.captionFont
        line: Theme.captionLine
        color: root.status === "A" ? Theme.badgeAddedInk : root.status === "D" ? Theme.badgeDeletedInk : Theme.badgeModifiedInk
        Accessible.ignored: true
    }
}
