pragma ComponentBehavior: Bound

import QtQuick.Templates as T
import Vantrel

/// One of the icons in a title bar.
QuietButton {
    width: Theme.windowButtonSize
    height: Theme.controlCompactSize
    display: T.AbstractButton.IconOnly
}
