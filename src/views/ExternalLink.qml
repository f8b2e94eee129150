pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Words that lead to a page in the browser.
LinkButton {
    isSmall: true
    Accessible.description: qsTr("Opens in your browser")
}
