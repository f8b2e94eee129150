pragma ComponentBehavior: Bound

import Vantrel

/// A suggested question.
BaseButton {
    implicitHeight: Theme.chipSize
    leftPadding: Theme.spaceM
    rightPadding: Theme.spaceM
    radius: height / 2
    labelColor: Theme.accent
    labelFont: Theme.smallFont
    fillColor: enabled ? Theme.card : Theme.sunken
    borderColor: enabled ? Theme.accentLine : Theme.line
    hoverColor: Theme.accentSoft
    pressedColor: Theme.accentLine
}
