pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What came of the last command, in one line; dots while it lasts. A failure stands elsewhere.
Item {
    id: root

    property int leftPadding: 0

    required property bool isBusy
    required property string message

    implicitWidth: root.leftPadding + row.width
    implicitHeight: Theme.controlSize

    ActivityDots {
        anchors.verticalCenter: parent.verticalCenter
        x: root.leftPadding
        visible: root.isBusy
    }

    Row {
        id: row

        anchors.verticalCenter: parent.verticalCenter
        x: root.leftPadding
        visible: !root.isBusy && root.message !== ""
        spacing: Theme.spaceXs

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            name: "check"
            tint: Theme.success
        }
        PlainLabel {
            text: root.message
            color: Theme.success
        }
    }
}
