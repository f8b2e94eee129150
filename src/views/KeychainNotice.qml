pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The explanation before the first keychain access, over everything else.
AlertDialog {
    id: root

    required property KeychainAccessNotice notice

    visible: root.notice.isShowingNotice
    iconName: "key"
    title: qsTr("Vantrel Needs Keychain Access")
    message: qsTr("Vantrel is about to check your API key in the macOS Keychain. Your Mac may ask for your login password — choose \"Always Allow\" so it won't ask again.")
    acceptLabel: qsTr("Continue")
    onAccepted: root.notice.acknowledge()
    onEscaped: root.notice.acknowledge()
}
