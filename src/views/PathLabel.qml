pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A path whose name stands out; the folder gives way first.
Item {
    id: root

    required property string folder
    required property string name

    readonly property bool isCut: folderLabel.truncated || folderLabel.width < folderLabel.implicitWidth || nameLabel.truncated

    implicitWidth: folderLabel.implicitWidth + nameLabel.implicitWidth
    implicitHeight: Theme.bodyLine

    PlainLabel {
        id: folderLabel

        width: Math.max(0, Math.min(implicitWidth, root.width - nameLabel.width))
        text: root.folder
        color: Theme.inkTertiary
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }

    PlainLabel {
        id: nameLabel

        anchors.left: folderLabel.right
        width: Math.min(implicitWidth, root.width)
        text: root.name
        font: Theme.bodyBoldFont
        color: Theme.inkHeading
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }
}
