pragma ComponentBehavior: Bound
import QtQuick
import Vantrel

/// A text from wherever: shown, never obeyed.
Text {
    textFormat: Text.PlainText
    font: Theme.bodyFont
    color: Theme.ink
    lineHeightMode: Text.FixedHeight
    lineHeight: Theme.bodyLine
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
