pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Where a question is written and sent.
FocusScope {
    id: root

    required property ConversationPresenter conversation

    readonly property int maximumFieldHeight: Theme.composerMaxSize

    signal escaped
    signal steppedNext
    signal steppedPrevious

    implicitHeight: Math.max(field.height, sendButton.height)

    Rectangle {
        id: field

        width: root.width - sendButton.width - Theme.spaceS
        height: Math.min(root.maximumFieldHeight, Math.max(Theme.controlLargeSize, input.implicitHeight + 2 * Theme.selectedWidth))
        radius: Theme.controlRadius
        color: input.enabled ? Theme.card : Theme.sunken
        border.width: input.activeFocus ? Theme.selectedWidth : Theme.hairlineWidth
        border.color: input.activeFocus ? Theme.focusRing : input.enabled ? Theme.controlBorder : Theme.line

        Flickable {
            id: flick

            anchors.fill: parent
            anchors.margins: Theme.selectedWidth
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            contentWidth: width
            contentHeight: input.height

            T.TextArea {
                id: input

                width: flick.width
                height: implicitHeight
                implicitHeight: contentHeight + topPadding + bottomPadding
                leftPadding: Theme.fieldPaddingSize
                rightPadding: Theme.fieldPaddingSize
                topPadding: Theme.spaceS - Theme.selectedWidth
                bottomPadding: topPadding
                focus: true
                enabled: !root.conversation.isChatInputDisabled
                textFormat: TextEdit.PlainText
                wrapMode: TextEdit.Wrap
                font: Theme.bodyFont
                color: Theme.ink
                selectionColor: Theme.selection
                selectedTextColor: Theme.ink
                selectByMouse: true
                Accessible.role: Accessible.EditableText
                Accessible.name: placeholder.text
                onTextChanged: root.conversation.draft = text
                onCursorRectangleChanged: {
                    const top = cursorRectangle.y - topPadding;
                    const bottom = cursorRectangle.y + cursorRectangle.height + bottomPadding;
                    flick.contentY = Math.max(Math.min(flick.contentY, top), bottom - flick.height);
                }

                Keys.onPressed: event => {
                    const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter;
                    event.accepted = true;
                    if (isReturn && !(event.modifiers & Qt.ShiftModifier)) {
                        root.conversation.send();
                    } else if (event.key === Qt.Key_Escape) {
                        root.escaped();
                    } else if (event.key === Qt.Key_Tab) {
                        nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason);
                    } else if (event.key === Qt.Key_Backtab) {
                        nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason);
                    } else if (event.key === Qt.Key_Down && event.modifiers & Qt.AltModifier) {
                        root.steppedNext();
                    } else if (event.key === Qt.Key_Up && event.modifiers & Qt.AltModifier) {
                        root.steppedPrevious();
                    } else {
                        event.accepted = false;
                    }
                }
            }
        }

        PlainLabel {
            id: placeholder

            x: input.leftPadding + Theme.selectedWidth
            height: Theme.controlLargeSize
            width: field.width - 2 * x
            visible: input.text === "" && input.preeditText === ""
            text: qsTr("Ask a follow-up…")
            color: input.enabled ? Theme.inkTertiary : Theme.inkDisabled
            Accessible.ignored: true
        }
    }

    PrimaryButton {
        id: sendButton

        anchors.right: root.right
        anchors.bottom: field.bottom
        height: Theme.controlLargeSize
        text: qsTr("Send")
        enabled: root.conversation.canSend
        onClicked: root.conversation.send()
    }

    Connections {
        function onDraftChanged(): void {
            if (input.text !== root.conversation.draft) {
                input.text = root.conversation.draft;
            }
        }

        target: root.conversation
    }

    Component.onCompleted: input.text = root.conversation.draft
}
