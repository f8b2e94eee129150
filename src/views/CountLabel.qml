pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A number of added or deleted lines; zero is left blank.
PlainLabel {
    id: root

    required property int count
    required property bool isAddition

    text: root.count === 0 ? "" : (root.isAddition ? "+" : "−") + root.count
    font: Theme.codeFont
    color: root.isAddition ? Theme.diffAddedInk : Theme.diffDeletedInk
    horizontalAlignment: Text.AlignRight
}
