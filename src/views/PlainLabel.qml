pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A text from wherever: shown, never obeyed. One that does not wrap stands in the middle of its line.
Text {
    id: root

    property int line: Theme.bodyLine

    height: root.wrapMode === Text.NoWrap ? root.line : implicitHeight
    verticalAlignment: Text.AlignVCenter
    textFormat: Text.PlainText
    font: Theme.bodyFont
    color: Theme.ink
    lineHeightMode: root.wrapMode === Text.NoWrap ? Text.ProportionalHeight : Text.FixedHeight
    lineHeight: root.wrapMode === Text.NoWrap ? 1 : root.line
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
