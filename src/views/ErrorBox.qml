pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A failure in its own words, with the words that lead to its remedy.
Rectangle {
    id: root

    required property string message
    property string linkText: ""
    property int rightInset: 0 ///< What stands at the right of the words.

    signal linkActivated

    implicitHeight: column.implicitHeight + 2 * column.y
    radius: Theme.cardRadius
    color: Theme.errorSoft
    border.width: Theme.hairlineWidth
    border.color: Theme.errorLine
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.message

    Icon {
        x: Theme.boxIconInsetSize
        y: Theme.spaceM
        name: "warning"
        tint: Theme.error
    }

    Column {
        id: column

        x: Theme.boxTextInsetSize
        y: Theme.fieldPaddingSize
        width: root.width - x - Theme.boxIconInsetSize - root.rightInset

        PlainLabel {
            width: column.width
            text: root.message
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }

        LinkButton {
            visible: text !== ""
            text: root.linkText
            onClicked: root.linkActivated()
        }
    }
}
