pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The box of whatever is filled in.
Rectangle {
    id: root

    required property bool isFocused
    property bool isRefused: false

    radius: Theme.controlRadius
    color: root.enabled ? Theme.card : Theme.sunken
    border.width: root.isFocused ? Theme.selectedWidth : Theme.hairlineWidth
    border.color: !root.enabled ? Theme.line : root.isRefused ? Theme.error : root.isFocused ? Theme.focusRing : Theme.controlBorder
}
