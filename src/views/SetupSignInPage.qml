pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// While the person is in the browser.
SetupPage {
    id: root

    title: qsTr("Sign in with OpenRouter")
    help: qsTr("Approve Vantrel on the OpenRouter page that just opened. Setup continues here on its own when you're done.")
    errorLinkText: root.viewModel.canSaveKeyAgain ? qsTr("Save the key again") : ""
    onErrorLinkActivated: root.viewModel.saveKeyAgain()
    onEscaped: root.viewModel.cancelSignIn()

    Rectangle {
        width: parent.width
        height: Theme.waitingSize
        visible: root.viewModel.isSigningIn
        radius: Theme.cardRadius
        color: Theme.surface
        border.width: Theme.hairlineWidth
        border.color: Theme.line

        Row {
            anchors.verticalCenter: parent.verticalCenter
            x: Theme.spaceL
            spacing: Theme.fieldPaddingSize

            ActivityDots {
                anchors.verticalCenter: parent.verticalCenter
            }
            PlainLabel {
                text: qsTr("Waiting for you to finish in your browser…")
            }
        }
    }

    wayOn: SecondaryButton {
        focus: true
        text: qsTr("Cancel")
        onClicked: root.viewModel.cancelSignIn()
    }
}
