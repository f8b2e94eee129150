pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Commands as they are, each in lines of its own; many of them scroll.
Rectangle {
    id: root

    required property string commands

    function scrollBy(distance: int): void {
        list.contentY = Math.max(0, Math.min(list.contentHeight - list.height, list.contentY + distance));
    }

    implicitHeight: Math.min(words.height + 2 * Theme.fieldPaddingSize, Theme.commandBoxMaxSize)
    radius: Theme.controlRadius
    color: Theme.sunken
    border.width: Theme.hairlineWidth
    border.color: Theme.line

    Flickable {
        id: list

        anchors.fill: parent
        anchors.topMargin: Theme.fieldPaddingSize
        anchors.bottomMargin: Theme.fieldPaddingSize
        contentHeight: words.height
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ThinScrollBar {}

        PlainLabel {
            id: words

            x: Theme.fieldPaddingSize
            width: list.width - 2 * x
            text: root.commands
            font: Theme.codeFont
            line: Theme.codeLine
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }
}
