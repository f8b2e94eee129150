pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One of the ways to a provider: what it is called and what it asks of the person.
T.AbstractButton {
    id: root

    required property string iconName
    required property string note
    /// The way for most people.
    property bool isRecommended: false

    implicitHeight: words.implicitHeight + 2 * Theme.optionPaddingSize
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.description: root.note
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()
    Keys.onDownPressed: root.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onUpPressed: root.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    background: Rectangle {
        radius: Theme.cardRadius
        color: root.down ? Theme.rowPressed : root.hovered ? Theme.rowHover : Theme.card
        border.width: Theme.hairlineWidth
        border.color: Theme.lineStrong

        FocusRing {
            visible: root.visualFocus
            radius: Theme.cardRadius
        }
    }

    Rectangle {
        x: Theme.spaceL
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.circleSize
        height: Theme.circleSize
        radius: height / 2
        color: root.isRecommended ? Theme.accentSoft : Theme.sunken

        Icon {
            anchors.centerIn: parent
            name: root.iconName
            tint: root.isRecommended ? Theme.accent : Theme.inkSecondary
        }
    }

    Column {
        id: words

        x: Theme.spaceL + Theme.circleSize + Theme.rowGapSize
        anchors.verticalCenter: parent.verticalCenter
        width: chevron.x - x - Theme.spaceL

        PlainLabel {
            width: words.width
            text: root.text
            font: Theme.headingFont
            line: Theme.headingLine
            color: Theme.inkHeading
            Accessible.ignored: true
        }
        PlainLabel {
            width: words.width
            text: root.note
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }
    }

    Icon {
        id: chevron

        anchors.right: parent.right
        anchors.rightMargin: Theme.optionPaddingSize
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-right"
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
