pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// A secret that somebody else holds, with an eye that shows it to the person alone. To screen readers
/// the field itself is hidden, since every program that reads the screen could read the secret; an item
/// around it stands for it. Qt gives such an item no name, so the group around both has it.
FocusScope {
    id: root

    required property string label
    property string value: ""
    property string placeholderText: ""
    property bool isRefused: false
    property bool isShown: false

    signal edited(string text)
    signal accepted

    implicitHeight: Theme.controlSize
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label
    Accessible.description: root.placeholderText
    onValueChanged: {
        if (input.text !== value) {
            input.text = value;
        }
        if (value === "") {
            isShown = false;
        }
    }
    Component.onCompleted: input.text = value

    FieldFrame {
        anchors.fill: parent
        isFocused: input.activeFocus
        isRefused: root.isRefused
    }

    FocusScope {
        anchors.left: parent.left
        anchors.right: eye.left
        height: parent.height
        focus: true
        Accessible.role: Accessible.EditableText
        Accessible.description: root.label
        Accessible.passwordEdit: true
        Accessible.focusable: true
        Accessible.focused: input.activeFocus

        T.TextField {
            id: input

            anchors.fill: parent
            focus: true
            activeFocusOnTab: true
            leftPadding: Theme.fieldPaddingSize + Theme.hairlineWidth
            rightPadding: Theme.spaceXs
            verticalAlignment: TextInput.AlignVCenter
            echoMode: root.isShown ? TextInput.Normal : TextInput.Password
            passwordMaskDelay: 0
            inputMethodHints: Qt.ImhSensitiveData | Qt.ImhNoPredictiveText | Qt.ImhNoAutoUppercase
            font: Theme.bodyFont
            color: root.enabled ? Theme.ink : Theme.inkDisabled
            selectionColor: Theme.selection
            selectedTextColor: Theme.ink
            selectByMouse: true
            Accessible.ignored: true
            onTextEdited: root.edited(text)
            onAccepted: root.accepted()

            PlainLabel {
                x: input.leftPadding
                width: input.width - input.leftPadding - input.rightPadding
                height: input.height
                visible: input.text === "" && input.preeditText === ""
                text: root.placeholderText
                color: root.enabled ? Theme.inkTertiary : Theme.inkDisabled
                Accessible.ignored: true
            }
        }
    }

    // A control would be announced as what Qt takes it for, so an item around it stands for it.
    FocusScope {
        id: eye

        function toggle(): void {
            root.isShown = !root.isShown;
        }

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: Theme.eyeMarginSize
        width: Theme.controlCompactSize
        height: Theme.controlCompactSize
        Accessible.role: Accessible.CheckBox
        Accessible.name: eyeButton.text
        Accessible.checkable: true
        Accessible.checked: root.isShown
        Accessible.focusable: true
        Accessible.focused: eyeButton.activeFocus
        Accessible.onPressAction: eye.toggle()
        Accessible.onToggleAction: eye.toggle()

        QuietButton {
            id: eyeButton

            anchors.fill: parent
            focus: true
            display: T.AbstractButton.IconOnly
            iconName: root.isShown ? "eye-off" : "eye"
            text: root.isShown ? qsTr("Hide key") : qsTr("Show key")
            Accessible.ignored: true
            onClicked: eye.toggle()
        }
    }
}
