pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A model server on the person's own machine.
SetupPage {
    id: root

    title: qsTr("Use a Local Model")
    help: qsTr("Vantrel talks to a model server running on this Mac, so nothing is sent over the internet.")
    onEscaped: root.viewModel.back()

    FormRow {
        width: parent.width
        label: servers.label

        ServerChoice {
            id: servers

            width: parent.width
            focus: true
            label: qsTr("Server")
            viewModel: root.viewModel
        }
    }
    Item {
        width: 1
        height: Theme.formSpacingSize
    }
    FormRow {
        width: parent.width
        visible: root.viewModel.isCheckingLocalServers

        Row {
            height: Theme.controlSize
            spacing: Theme.fieldPaddingSize

            ActivityDots {
                anchors.verticalCenter: parent.verticalCenter
            }
            PlainLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Looking for Ollama and LM Studio…")
                color: Theme.inkSecondary
            }
        }
    }
    FormRow {
        width: parent.width
        visible: !root.viewModel.isCheckingLocalServers && !root.viewModel.isNoLocalModelFound
        label: models.label

        ComboBox {
            id: models

            width: parent.width
            label: qsTr("Model")
            textRole: ""
            model: root.viewModel.localModels
            currentIndex: root.viewModel.selectedLocalModelIndex
            displayText: root.viewModel.selectedLocalModelName
            onActivated: row => root.viewModel.chooseLocalModelAt(row)

            delegate: ComboBoxRow {
                required property int index
                required property string modelData

                width: ListView.view ? ListView.view.width : 0
                name: modelData
                note: ""
                isChosen: index === models.currentIndex
                hasLineAbove: false
                highlighted: index === models.highlightedIndex
            }
        }
    }
    FormRow {
        width: parent.width
        visible: !root.viewModel.isCheckingLocalServers && root.viewModel.isNoLocalModelFound

        PlainLabel {
            width: parent.width
            text: qsTr("Start Ollama or LM Studio and download a model, then check again.")
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }

    wayBack: SecondaryButton {
        text: qsTr("Back")
        onClicked: root.viewModel.back()
    }
    wayOn: [
        SecondaryButton {
            text: qsTr("Check Again")
            enabled: !root.viewModel.isCheckingLocalServers
            onClicked: root.viewModel.checkLocalServers()
        },
        PrimaryButton {
            text: qsTr("Use This Model")
            enabled: !root.viewModel.isCheckingLocalServers
            onClicked: root.viewModel.useLocalModel()
        }
    ]
}
