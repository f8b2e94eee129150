pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A failure in its own words, with the words that lead to its remedy.
MessageBox {
    id: root

    property string linkText: ""

    signal linkActivated

    iconName: "warning"
    tint: Theme.error
    color: Theme.errorSoft
    border.color: Theme.errorLine
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.message

    links: LinkButton {
        visible: text !== ""
        text: root.linkText
        onClicked: root.linkActivated()
    }
}
