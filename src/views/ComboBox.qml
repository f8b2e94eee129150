pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One choice of several, which open below. The rows have the roles `name` and `note`; the last row
/// without a note is of another kind. It shows `displayText`, which somebody else holds, and tells by
/// `activated` which row the person wants.
T.ComboBox {
    id: root

    required property string label

    readonly property int maximumRows: 8

    implicitHeight: Theme.controlSize
    leftPadding: Theme.fieldPaddingSize + Theme.hairlineWidth
    rightPadding: leftPadding
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    textRole: "name"
    Accessible.role: Accessible.ComboBox
    Accessible.name: root.label
    Accessible.description: root.displayText
    // The rows take their keys from here.
    Accessible.onPressAction: {
        root.forceActiveFocus(Qt.OtherFocusReason);
        root.popup.open();
    }
    // Return opens the rows too. Its release it is that takes a row while they are open.
    Keys.onReleased: event => {
        event.accepted = !root.popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter);
        if (event.accepted) {
            root.popup.open();
        }
    }

    background: FieldFrame {
        isFocused: root.visualFocus || root.popup.visible
    }

    contentItem: PlainLabel {
        text: root.displayText
        color: root.enabled ? Theme.inkHeading : Theme.inkDisabled
        rightPadding: Theme.iconSize + Theme.spaceS
        Accessible.ignored: true
    }

    indicator: Icon {
        x: root.width - width - Theme.fieldPaddingSize - Theme.hairlineWidth
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron-down"
        size: Theme.iconSmallSize
        tint: root.enabled ? Theme.inkHeading : Theme.inkDisabled
    }

    delegate: ComboBoxRow {
        required property int index

        width: ListView.view ? ListView.view.width : 0
        isChosen: index === root.currentIndex
        hasLineAbove: index > 0 && note === ""
        highlighted: index === root.highlightedIndex
    }

    popup: T.Popup {
        y: root.height + Theme.spaceXs
        width: root.width
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        padding: Theme.spaceXs + Theme.hairlineWidth
        margins: Theme.spaceXs

        contentItem: ListView {
            implicitHeight: Math.min(contentHeight, root.maximumRows * Theme.menuNoteRowSize)
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.delegateModel
            currentIndex: root.highlightedIndex
            highlightMoveDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: root.label

            T.ScrollBar.vertical: ThinScrollBar {}
        }

        background: FloatingSheet {
            radius: Theme.cardRadius
        }
    }
}
