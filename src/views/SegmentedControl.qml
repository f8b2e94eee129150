pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One choice of a few that are all in sight. It shows the choice that somebody else holds and tells
/// which one the person wants. One stop of the keyboard, whose arrows choose.
FocusScope {
    id: root

    required property string label
    required property list<string> options
    required property int currentIndex

    signal chosen(int index)

    function step(by: int): void {
        const index = root.currentIndex + by;
        if (index >= 0 && index < root.options.length) {
            root.chosen(index);
        }
    }

    implicitWidth: segments.implicitWidth + 2 * Theme.segmentInsetSize
    implicitHeight: Theme.controlSize
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label
    Accessible.focusable: true
    Accessible.focused: keyboard.activeFocus

    // A control would be announced as what Qt takes it for, so the item around it stands for it.
    T.Control {
        id: keyboard

        anchors.fill: parent
        focus: true
        focusPolicy: Qt.StrongFocus
        Accessible.ignored: true
        Keys.onLeftPressed: root.step(-1)
        Keys.onUpPressed: root.step(-1)
        Keys.onRightPressed: root.step(1)
        Keys.onDownPressed: root.step(1)

        background: Rectangle {
            radius: Theme.controlRadius
            color: Theme.sunken
            border.width: Theme.hairlineWidth
            border.color: Theme.line

            FocusRing {
                visible: keyboard.visualFocus
                radius: Theme.controlRadius
            }
        }
    }

    Row {
        id: segments

        x: Theme.segmentInsetSize
        y: Theme.segmentInsetSize

        Repeater {
            model: root.options

            Segment {
                height: root.height - 2 * Theme.segmentInsetSize
                isChosen: index === root.currentIndex
                onPressed: keyboard.forceActiveFocus(Qt.MouseFocusReason)
                onClicked: root.chosen(index)
            }
        }
    }
}
