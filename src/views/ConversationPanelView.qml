pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The conversation about the selected hunk: its messages, the suggested questions, and the field.
FocusScope {
    id: root

    required property DiffViewModel viewModel

    /// How near to the end the view must be to follow what is added there.
    readonly property int followDistance: Theme.followSize

    signal escaped
    signal settingsRequested

    /// Puts the keyboard in the field, unless it takes no question now.
    function focusField(): void {
        if (root.visible && composer.visible && !conversation.isChatInputDisabled) {
            composer.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    ConversationPresenter {
        id: conversation

        diff: root.viewModel
    }

    ChatMessageListModel {
        id: messages

        chat: conversation.chat
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    ListView {
        id: list

        property bool followsEnd: true

        function follow(): void {
            if (list.followsEnd) {
                list.positionViewAtEnd();
                list.contentY = Math.max(list.originY - list.topMargin, list.originY + list.contentHeight + list.bottomMargin - list.height);
            }
        }

        x: Theme.spaceXl
        width: root.width - 2 * x
        height: foot.y - Theme.spaceM
        clip: true
        topMargin: Theme.spaceL
        bottomMargin: bottom.height
        spacing: Theme.fieldPaddingSize
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: list.count > 0
        keyNavigationEnabled: false
        model: messages
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Conversation")
        onMovementEnded: list.followsEnd = list.originY + list.contentHeight + list.bottomMargin - list.contentY - list.height < root.followDistance
        onContentHeightChanged: following.restart()
        onHeightChanged: following.restart()
        onCountChanged: following.restart()
        onBottomMarginChanged: following.restart()
        onModelChanged: list.followsEnd = true

        // Once for all the changes of a turn, and after the bubbles have their places.
        Timer {
            id: following

            interval: 0
            onTriggered: list.follow()
        }

        Keys.onUpPressed: list.flick(0, Theme.flickSpeed)
        Keys.onDownPressed: list.flick(0, -Theme.flickSpeed)
        Keys.onEscapePressed: root.escaped()

        delegate: ChatBubbleView {
            width: list.width
        }

        // The end that the view follows, with the failure of the last question.
        Item {
            id: bottom

            objectName: "bottom"
            parent: list.contentItem
            y: list.originY + list.contentHeight
            width: list.width
            height: failure.visible ? failure.y + failure.height + Theme.spaceS : Theme.spaceS

            ErrorBox {
                id: failure

                y: list.count > 0 ? list.spacing : 0
                width: parent.width
                visible: message !== ""
                message: conversation.message
                linkText: conversation.recoveryLabel
                onLinkActivated: root.settingsRequested()
            }
        }
    }

    FocusRing {
        anchors.fill: list
        visible: list.activeFocus
        radius: Theme.controlRadius
    }

    Column {
        id: foot

        x: Theme.spaceXl
        y: root.height - height - Theme.spaceXl
        width: root.width - 2 * x
        spacing: Theme.spaceM
        visible: conversation.chat !== null

        PlainLabel {
            width: foot.width
            visible: list.count === 0 && conversation.message === ""
            text: qsTr("Ask about this hunk — intent, risk, or what to test.")
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }

        Flow {
            width: foot.width
            spacing: Theme.spaceS
            visible: conversation.questions.length > 0

            Repeater {
                model: conversation.questions

                ChipButton {
                    required property int index
                    required property string modelData

                    width: Math.min(implicitWidth, foot.width)
                    text: modelData
                    enabled: !conversation.isChatInputDisabled
                    onClicked: {
                        list.followsEnd = true;
                        conversation.ask(index);
                    }
                }
            }
        }

        ChatComposer {
            id: composer

            width: foot.width
            focus: true
            conversation: conversation
            onEscaped: root.escaped()
            onSteppedNext: root.viewModel.goNext()
            onSteppedPrevious: root.viewModel.goPrevious()
        }
    }

    ThinScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            list.contentY = list.originY - list.topMargin + position * (list.topMargin + list.contentHeight + list.bottomMargin);
        }
    }
}
