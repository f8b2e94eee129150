pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The help window: every key that does something, and where.
FramedWindow {
    id: root

    width: 640
    height: 640
    minimumWidth: 640
    maximumWidth: 640
    minimumHeight: 320
    title: qsTr("Keyboard Shortcuts")

    ShortcutsView {
        anchors.fill: parent
        title: root.title
        focus: true
        onClosed: root.close()
    }
}
