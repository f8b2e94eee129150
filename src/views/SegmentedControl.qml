pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One choice of a few that are all in sight. It shows the choice that somebody else holds and tells
/// which one the person wants. One stop of the keyboard, whose arrows choose.
T.Control {
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

    implicitWidth: implicitContentWidth + 2 * padding
    implicitHeight: Theme.controlSize
    padding: 3
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label
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
            visible: root.visualFocus
            radius: Theme.controlRadius
        }
    }

    contentItem: Row {
        Repeater {
            model: root.options

            Segment {
                height: root.availableHeight
                isChosen: index === root.currentIndex
                onPressed: root.forceActiveFocus(Qt.MouseFocusReason)
                onClicked: root.chosen(index)
            }
        }
    }
}
