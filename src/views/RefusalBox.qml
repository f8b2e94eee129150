pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Why the folder that was chosen last was not opened, over a screen that goes on; it can be put away.
ErrorBox {
    id: root

    /// Put away until the next refusal.
    property bool isDismissed: false

    visible: root.message !== "" && !root.isDismissed
    rightInset: closeButton.width

    QuietButton {
        id: closeButton

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceS
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.controlCompactSize
        height: Theme.controlCompactSize
        display: T.AbstractButton.IconOnly
        iconName: "close"
        text: qsTr("Dismiss")
        onClicked: root.isDismissed = true
    }
}
