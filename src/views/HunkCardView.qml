pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What lies over a drawn hunk card: its head's words and tag, and what screen readers find. Presses
/// go through it to the panes.
Item {
    id: root

    required property int hunkIndex
    required property real cardTop
    required property real cardHeight
    required property string range
    required property string section
    required property string tag
    required property bool isExplaining
    required property bool isSelected
    required property string accessibleName
    required property QtObject rows

    signal selected

    height: root.cardHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: root.accessibleName
    Accessible.selected: root.isSelected
    Accessible.onPressAction: root.selected()

    HoverHandler {
        id: hover

        cursorShape: hover.point.position.y < Theme.cardHeadSize ? Qt.PointingHandCursor : Qt.IBeamCursor
    }

    PlainLabel {
        id: rangeLabel

        x: Theme.spaceM + Theme.hairlineWidth
        y: Theme.hairlineWidth
        height: Theme.cardHeadSize
        text: root.range
        font: Theme.codeFont
        color: Theme.inkTertiary
        Accessible.ignored: true
    }

    PlainLabel {
        anchors.left: rangeLabel.right
        anchors.leftMargin: Theme.spaceS
        anchors.right: tagBox.left
        anchors.rightMargin: Theme.spaceM
        y: Theme.hairlineWidth
        height: Theme.cardHeadSize
        text: root.section
        font: Theme.codeFont
        Accessible.ignored: true
    }

    Rectangle {
        id: tagBox

        anchors.right: parent.right
        anchors.rightMargin: root.isSelected ? Theme.spaceS + Theme.hairlineWidth : Theme.spaceXs + Theme.hairlineWidth
        y: Theme.hairlineWidth + (Theme.cardHeadSize - height) / 2
        width: root.tag === "" ? 0 : tagLabel.width + 2 * Theme.spaceS
        height: Theme.badgeSize
        visible: root.tag !== ""
        radius: Theme.badgeRadius
        color: root.isSelected ? Theme.card : "transparent"

        PlainLabel {
            id: tagLabel

            anchors.verticalCenter: parent.verticalCenter
            x: Theme.spaceS
            width: Math.min(implicitWidth, Theme.tagMaxSize - 2 * Theme.spaceS)
            text: root.tag
            font: Theme.smallFont
            line: Theme.smallLine
            color: root.isSelected ? Theme.accent : Theme.inkSecondary
            Accessible.ignored: true
        }
    }

    ActivityDots {
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceM
        y: Theme.hairlineWidth + (Theme.cardHeadSize - height) / 2
        visible: root.isExplaining
    }

    // The rows are painted elsewhere: these are there for screen readers alone, and while one is.
    Repeater {
        model: root.rows

        Item {
            required property real rowTop
            required property string accessibleName

            y: rowTop
            width: root.width
            height: Theme.codeRowSize
            Accessible.role: Accessible.Row
            Accessible.name: accessibleName
        }
    }
}
