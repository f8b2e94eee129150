pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A failure in its own words, with the words that lead to its remedy.
Rectangle {
    id: root

    required property string message
    property string linkText: ""

    implicitHeight: column.implicitHeight + 2 * column.y
    radius: Theme.cardRadius
    color: Theme.errorSoft
    border.width: Theme.hairlineWidth
    border.color: Theme.errorLine
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.message

    Icon {
        x: 13
        y: Theme.spaceM
        name: "warning"
        tint: Theme.error
    }

    Column {
        id: column

        x: 38
        y: 10
        width: root.width - x - 13

        PlainLabel {
            width: column.width
            text: root.message
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }

        PlainLabel {
            width: column.width
            visible: text !== ""
            text: root.linkText
            color: Theme.accent
        }
    }
}
