pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The bar below the title: the way back at its left, and what the screen puts beside it.
Rectangle {
    id: root

    required property string backText

    signal back

    default property alias content: rest.data

    implicitHeight: Theme.toolbarSize
    color: Theme.window
    z: 1

    QuietButton {
        id: backButton

        anchors.verticalCenter: parent.verticalCenter
        x: Theme.spaceS + Theme.hairlineWidth
        text: root.backText
        iconName: "chevron-left"
        onClicked: root.back()
    }

    Item {
        id: rest

        anchors.left: backButton.right
        anchors.right: parent.right
        height: parent.height
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.hairlineWidth
        color: Theme.line
    }
}
