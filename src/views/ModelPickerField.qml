pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Where a model is chosen: a provider's suggestions, and a field for any other identifier; for a
/// provider without suggestions the field alone. It shows the choice that somebody else holds.
/// Placed by bindings: a positioner leaves a field that comes into sight above the box until the
/// next frame, where it takes the box's clicks.
Item {
    id: root

    required property int providerIndex
    required property string model
    required property bool isUsingCustomModel
    property bool isRefused: false

    signal presetChosen(string id)
    signal customChosen(string text)
    signal edited(string text)
    signal accepted

    readonly property real fieldTop: choices.hasPresets ? menu.height + Theme.spaceS : 0

    implicitHeight: root.isUsingCustomModel ? field.y + field.height : menu.height

    ModelChoiceListModel {
        id: choices

        providerIndex: root.providerIndex
        model: root.model
        isUsingCustomModel: root.isUsingCustomModel
        onPresetChosen: id => root.presetChosen(id)
        onCustomChosen: text => root.customChosen(text)
    }

    ComboBox {
        id: menu

        objectName: "modelMenu"
        width: root.width
        visible: choices.hasPresets
        label: qsTr("Model")
        model: choices
        currentIndex: choices.currentIndex
        displayText: choices.currentName
        onActivated: row => {
            // Who picks the entry wants to type; who passes it with the arrows may be on the way.
            const isPicked = popup.visible;
            choices.choose(row);
            if (isPicked && root.isUsingCustomModel) {
                field.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }

    TextField {
        id: field

        y: root.fieldTop
        width: root.width
        visible: root.isUsingCustomModel
        label: qsTr("Model")
        value: root.model
        placeholderText: choices.placeholder
        isRefused: root.isRefused
        onEdited: text => root.edited(text)
        onAccepted: root.accepted()
    }
}
