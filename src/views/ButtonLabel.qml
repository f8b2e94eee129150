pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What stands on a button: an icon, words, or both.
Item {
    id: root

    required property string text
    required property string iconName
    required property font font
    required property color ink

    implicitWidth: row.implicitWidth
    implicitHeight: row.implicitHeight

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spaceXs

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.iconName !== ""
            name: root.iconName
            tint: root.ink
        }

        PlainLabel {
            visible: text !== ""
            text: root.text
            font: root.font
            color: root.ink
            Accessible.ignored: true
        }
    }
}
