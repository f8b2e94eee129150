pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The icon and the word of a button, in its middle.
Item {
    id: root

    required property string text
    required property string iconName
    required property font font
    required property color color

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight
    Accessible.ignored: true

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spaceXs

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.iconName !== ""
            name: root.iconName
            tint: root.color
        }

        PlainLabel {
            visible: text !== ""
            text: root.text
            font: root.font
            color: root.color
            Accessible.ignored: true
        }
    }
}
