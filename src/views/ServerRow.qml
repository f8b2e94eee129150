pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A model server: its mark, its name and what is known of it.
Item {
    id: root

    required property string name
    required property string status
    required property bool isRunning
    required property bool isChosen

    signal pressed
    signal clicked

    implicitHeight: Theme.serverRowSize
    Accessible.role: Accessible.RadioButton
    Accessible.name: root.name
    Accessible.description: root.status
    Accessible.checkable: true
    Accessible.checked: root.isChosen
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()

    RadioMark {
        id: mark

        x: Theme.spaceM
        anchors.verticalCenter: parent.verticalCenter
        isChosen: root.isChosen
    }
    PlainLabel {
        id: label

        anchors.left: mark.right
        anchors.leftMargin: Theme.spaceS
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
        color: root.enabled ? Theme.inkHeading : Theme.inkSecondary
        Accessible.ignored: true
    }
    PlainLabel {
        anchors.left: label.right
        anchors.leftMargin: Theme.spaceS
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceM
        anchors.verticalCenter: parent.verticalCenter
        text: root.status
        font: Theme.smallFont
        line: Theme.smallLine
        color: root.isRunning ? Theme.success : Theme.inkSecondary
        Accessible.ignored: true
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onPressed: root.pressed()
        onClicked: root.clicked()
    }
}
