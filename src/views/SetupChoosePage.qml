pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The three ways to a provider.
SetupPage {
    id: root

    signal dismissed

    title: qsTr("Set Up AI")
    help: qsTr("Vantrel explains your changes with an AI model you choose. Your code is sent only to that provider.")
    onEscaped: root.dismissed()

    SetupOption {
        width: parent.width
        focus: true
        isRecommended: true
        iconName: "globe"
        text: qsTr("Sign in with OpenRouter")
        note: qsTr("Recommended. Approve Vantrel in your browser and it gets its own OpenRouter key. Nothing to copy or paste.")
        onClicked: root.viewModel.startSignIn()
    }
    Item {
        width: 1
        height: Theme.spaceS
    }
    SetupOption {
        width: parent.width
        iconName: "key"
        text: qsTr("Paste an API Key")
        note: qsTr("Use a key you already have from OpenRouter or OpenAI.")
        onClicked: root.viewModel.choosePasteKey()
    }
    Item {
        width: 1
        height: Theme.spaceS
    }
    SetupOption {
        width: parent.width
        iconName: "computer"
        text: qsTr("Use a Local Model")
        note: qsTr("Ollama or LM Studio on this Mac. Your code never leaves it.")
        onClicked: root.viewModel.chooseLocalModel()
    }

    wayOn: SecondaryButton {
        text: qsTr("Not Now")
        onClicked: root.dismissed()
    }
}
