pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One message of the conversation: a question at the right, an answer at the left.
Item {
    id: root

    required property string text
    required property bool isQuestion
    required property bool isStreaming
    required property string accessibleName

    readonly property bool isThinking: root.isStreaming && root.text === ""
    readonly property real maximumWidth: Math.round(Theme.bubbleRatio * root.width)

    implicitHeight: bubble.height
    Accessible.role: Accessible.ListItem
    Accessible.name: root.isThinking ? thinking.Accessible.name : root.accessibleName

    Rectangle {
        id: bubble

        x: root.isQuestion ? root.width - width : 0
        width: content.width + 2 * Theme.spaceM
        height: content.height + 2 * Theme.spaceS
        radius: Theme.bubbleRadius
        color: root.isQuestion ? Theme.accentSoft : Theme.card
        border.width: root.isQuestion ? 0 : Theme.hairlineWidth
        border.color: Theme.line

        Item {
            id: content

            x: Theme.spaceM
            y: Theme.spaceS
            width: root.isThinking ? thinking.width : message.width
            height: root.isThinking ? thinking.height : message.height

            ThinkingIndicatorView {
                id: thinking

                visible: root.isThinking
                Accessible.ignored: true
            }

            ProseText {
                id: message

                width: Math.min(Math.ceil(naturalWidth), root.maximumWidth - 2 * Theme.spaceM)
                visible: !root.isThinking
                source: root.text
                isMarkdown: !root.isQuestion
                Accessible.ignored: true
            }
        }
    }
}
