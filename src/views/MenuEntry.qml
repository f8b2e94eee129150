pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One line of a menu: what it does, and the keys that do the same.
T.MenuItem {
    id: root

    property string keys: ""

    implicitWidth: ListView.view ? ListView.view.width : 0
    implicitHeight: Theme.menuRowSize
    leftPadding: Theme.fieldPaddingSize
    rightPadding: Theme.fieldPaddingSize
    hoverEnabled: true
    Accessible.role: Accessible.MenuItem
    Accessible.name: root.text
    Accessible.description: root.enabled ? root.keys : qsTr("unavailable")
    Accessible.onPressAction: {
        root.triggered();
        root.menu.close();
    }

    contentItem: Item {
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            text: root.text
            color: root.enabled ? Theme.ink : Theme.inkDisabled
            Accessible.ignored: true
        }
        PlainLabel {
            anchors.verticalCenter: parent.verticalCenter
            anchors.right: parent.right
            text: root.keys
            font: Theme.smallFont
            line: Theme.smallLine
            color: root.enabled ? Theme.inkSecondary : Theme.inkDisabled
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Theme.badgeRadius
        color: !root.enabled ? "transparent" : root.down ? Theme.rowPressed : root.hovered || root.highlighted ? Theme.rowHover : "transparent"
    }
}
