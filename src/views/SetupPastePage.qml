pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A key that the person has already.
SetupPage {
    id: root

    title: qsTr("Paste an API Key")
    onEscaped: root.viewModel.back()

    FormRow {
        width: parent.width
        label: providers.label

        SegmentedControl {
            id: providers

            label: qsTr("Provider")
            options: root.viewModel.pasteProviderNames
            currentIndex: root.viewModel.pasteProviderIndex
            onChosen: index => root.viewModel.choosePasteProvider(index)
        }
    }
    Item {
        width: 1
        height: Theme.formSpacingSize
    }
    FormRow {
        width: parent.width
        label: keyField.label

        PasswordField {
            id: keyField

            width: parent.width
            focus: true
            label: qsTr("API key")
            value: root.viewModel.apiKeyDraft
            onEdited: text => root.viewModel.apiKeyDraft = text
            onAccepted: root.viewModel.savePastedKey()
        }
        Item {
            width: 1
            height: Theme.bulletSize
        }
        ExternalLink {
            iconName: "external"
            text: qsTr("Get an %1 key").arg(root.viewModel.pasteProviderName)
            onClicked: root.viewModel.openKeyPage()
        }
    }
    Item {
        width: 1
        height: Theme.formSpacingSize
    }
    FormRow {
        width: parent.width
        label: qsTr("Model")

        ModelPickerField {
            width: parent.width
            providerIndex: root.viewModel.pasteProviderIndex
            model: root.viewModel.pasteModel
            isUsingCustomModel: root.viewModel.isPasteModelCustom
            onPresetChosen: id => root.viewModel.selectPreset(id)
            onCustomChosen: text => root.viewModel.selectCustomModel(text)
            onEdited: text => root.viewModel.pasteModel = text
            onAccepted: root.viewModel.savePastedKey()
        }
    }
    Item {
        width: 1
        height: Theme.spaceL
        visible: note.visible
    }
    NoteBox {
        id: note

        width: parent.width
        visible: root.viewModel.isPrepaidCreditNeeded
        message: qsTr("OpenAI keys only work after you add prepaid credit (at least $5) to your OpenAI account.")
    }

    wayBack: SecondaryButton {
        text: qsTr("Back")
        onClicked: root.viewModel.back()
    }
    wayOn: PrimaryButton {
        text: qsTr("Save")
        enabled: !root.viewModel.isSavingKey
        onClicked: root.viewModel.savePastedKey()
    }
}
