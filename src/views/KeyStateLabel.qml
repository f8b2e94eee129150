pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Whether a provider's key is saved. Blank, at its height, until the keychain has answered.
Item {
    id: root

    required property bool isKnown
    required property bool hasSavedKey
    required property string providerName

    implicitHeight: Theme.smallLine

    Icon {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isKnown && root.hasSavedKey
        size: Theme.iconSmallSize
        name: "check"
        tint: Theme.success
    }

    PlainLabel {
        x: root.hasSavedKey ? Theme.spaceXl : 0
        width: root.width - x
        visible: root.isKnown
        text: root.hasSavedKey ? qsTr("Key saved for %1").arg(root.providerName) : qsTr("No key saved")
        font: Theme.smallFont
        line: Theme.smallLine
        color: root.hasSavedKey ? Theme.success : Theme.inkTertiary
    }
}
