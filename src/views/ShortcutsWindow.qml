pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The help window: every key that does something, and where.
FramedWindow {
    id: root

    width: Theme.subWindowSize
    height: Theme.subWindowSize
    minimumWidth: Theme.subWindowSize
    maximumWidth: Theme.subWindowSize
    minimumHeight: Theme.subWindowMinHeightSize
    title: qsTr("Keyboard Shortcuts")

    ShortcutsView {
        anchors.fill: parent
        title: root.title
        focus: true
        onClosed: root.close()
    }
}
