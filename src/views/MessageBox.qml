pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A sentence on a ground of its own, with an icon before it and what leads on from it below.
Rectangle {
    id: root

    required property string message
    required property string iconName
    required property color tint
    property color ink: Theme.ink
    property bool isSmall: false
    property int rightInset: 0 ///< What stands at the right of the words.
    /// Below the sentence.
    property alias links: column.data

    implicitHeight: column.implicitHeight + 2 * column.y
    radius: Theme.cardRadius
    border.width: Theme.hairlineWidth

    Icon {
        x: Theme.boxIconInsetSize
        y: Theme.spaceM
        name: root.iconName
        tint: root.tint
    }

    Column {
        id: column

        x: Theme.boxTextInsetSize
        y: Theme.fieldPaddingSize
        width: root.width - x - Theme.boxIconInsetSize - root.rightInset

        PlainLabel {
            width: column.width
            text: root.message
            font: root.isSmall ? Theme.smallFont : Theme.bodyFont
            line: root.isSmall ? Theme.smallLine : Theme.bodyLine
            color: root.ink
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }
}
