pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Before a key is saved for the first time.
SetupPage {
    id: root

    iconName: "key"
    title: qsTr("Your API Key Is Stored in the Keychain")
    help: qsTr("Vantrel stores your API key in the macOS Keychain, Apple's encrypted credential store. Your Mac may ask for your login password to allow this. If it does, choose \"Always Allow\" so it won't ask again.")

    wayOn: PrimaryButton {
        focus: true
        text: qsTr("Continue")
        onClicked: root.viewModel.confirmKeychainNotice()
    }
}
