pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The list of all keys, by place.
FocusScope {
    id: root

    required property string title

    signal closed

    Keys.onEscapePressed: root.closed()

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    ListView {
        id: list

        anchors.top: strip.bottom
        anchors.bottom: parent.bottom
        width: root.width
        topMargin: Theme.spaceM
        bottomMargin: Theme.spaceXxl
        focus: true
        activeFocusOnTab: true
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: ShortcutList {}
        Accessible.role: Accessible.List
        Accessible.name: root.title

        delegate: Item {
            id: row

            required property string keys
            required property string effect

            readonly property bool isHeading: row.keys === ""

            width: list.width
            height: row.isHeading ? Theme.headingLine + Theme.spaceXxl : Theme.menuRowSize
            Accessible.role: row.isHeading ? Accessible.Heading : Accessible.ListItem
            Accessible.name: row.isHeading ? row.effect : row.keys + ": " + row.effect

            PlainLabel {
                x: Theme.spaceXxl
                anchors.bottom: parent.bottom
                anchors.bottomMargin: Theme.spaceXs
                visible: row.isHeading
                text: row.effect
                font: Theme.headingFont
                line: Theme.headingLine
                color: Theme.inkHeading
                Accessible.ignored: true
            }
            PlainLabel {
                x: Theme.spaceXxl
                anchors.verticalCenter: parent.verticalCenter
                width: Theme.keysColumnSize
                visible: !row.isHeading
                text: row.keys
                color: Theme.inkHeading
                Accessible.ignored: true
            }
            PlainLabel {
                x: Theme.spaceXxl + Theme.keysColumnSize + Theme.spaceM
                anchors.verticalCenter: parent.verticalCenter
                visible: !row.isHeading
                width: row.width - x - Theme.spaceXxl
                text: row.effect
                color: Theme.inkSecondary
                Accessible.ignored: true
            }
            Rectangle {
                x: Theme.spaceXxl
                anchors.bottom: parent.bottom
                width: row.width - 2 * x
                height: Theme.hairlineWidth
                color: Theme.line
            }
        }

        Keys.onPressed: event => {
            const steps = {
                [Qt.Key_Down]: Theme.menuRowSize,
                [Qt.Key_Up]: -Theme.menuRowSize,
                [Qt.Key_PageDown]: list.height - Theme.menuRowSize,
                [Qt.Key_PageUp]: Theme.menuRowSize - list.height,
                [Qt.Key_End]: list.contentHeight,
                [Qt.Key_Home]: -list.contentHeight
            };
            if (event.key in steps) {
                const lowest = list.contentHeight + list.bottomMargin - list.height;
                list.contentY = Math.max(-list.topMargin, Math.min(lowest, list.contentY + steps[event.key]));
                event.accepted = true;
            }
        }
    }

    ThinScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            list.contentY = position * (list.contentHeight + list.topMargin + list.bottomMargin) - list.topMargin;
        }
    }

    SubWindowTitle {
        id: strip

        width: root.width
        title: root.title
    }
}
