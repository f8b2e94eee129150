pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The title bar of a window that belongs to the main one: its title, and the way to close it.
TitleStrip {
    id: root

    required property string title

    isResizable: false
    Accessible.name: root.title

    PlainLabel {
        anchors.verticalCenter: parent.verticalCenter
        x: Theme.spaceL
        text: root.title
        font: Theme.bodyBoldFont
        color: Theme.inkHeading
    }
}
