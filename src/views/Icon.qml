pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One of the application's drawings, in the colour of its place. Decoration: screen readers pass it.
Image {
    id: root

    required property string name
    property color tint: Theme.inkSecondary
    property int size: Theme.iconSize

    width: root.size
    height: root.size
    sourceSize.width: root.size * Screen.devicePixelRatio
    sourceSize.height: root.size * Screen.devicePixelRatio
    source: "image://icon/" + root.name + "/" + root.tint.toString().slice(-6)
    Accessible.ignored: true
}
