pragma ComponentBehavior: Bound

import Vantrel

/// The one thing to do next; one in a view.
BaseButton {
    labelColor: Theme.inkOnAccent
    labelFont: Theme.bodyBoldFont
    fillColor: enabled ? Theme.accentFill : Theme.sunken
    hoverColor: Theme.accentFillHover
    pressedColor: Theme.accentFillPressed
}
