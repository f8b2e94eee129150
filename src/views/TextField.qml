pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One line of text, which somebody else holds: it shows `value` and tells what the person makes of it.
T.TextField {
    id: root

    required property string label
    property string value: ""
    property bool isRefused: false

    signal edited(string text)

    implicitHeight: Theme.controlSize
    leftPadding: 10 + Theme.hairlineWidth
    rightPadding: leftPadding
    verticalAlignment: TextInput.AlignVCenter
    activeFocusOnTab: true
    font: Theme.bodyFont
    color: root.enabled ? Theme.ink : Theme.inkDisabled
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    selectByMouse: true
    Accessible.role: Accessible.EditableText
    Accessible.name: root.label
    Accessible.description: root.placeholderText
    onValueChanged: if (text !== value) {
        text = value;
    }
    onTextEdited: root.edited(text)
    Component.onCompleted: text = value

    background: FieldFrame {
        isFocused: root.activeFocus
        isRefused: root.isRefused
    }

    PlainLabel {
        x: root.leftPadding
        width: root.width - root.leftPadding - root.rightPadding
        height: root.height
        visible: root.text === "" && root.preeditText === ""
        text: root.placeholderText
        color: root.enabled ? Theme.inkTertiary : Theme.inkDisabled
        Accessible.ignored: true
    }
}
