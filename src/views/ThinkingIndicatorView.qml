pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// An answer that has not begun.
Row {
    id: root

    spacing: Theme.spaceS
    Accessible.role: Accessible.StaticText
    Accessible.name: label.text

    PlainLabel {
        id: label

        text: qsTr("Thinking")
        color: Theme.inkTertiary
        Accessible.ignored: true
    }
    ActivityDots {
        anchors.verticalCenter: parent.verticalCenter
    }
}
