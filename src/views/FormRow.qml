pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A row of a form: a label, right-aligned beside the first line of what it names.
Item {
    id: root

    property string label: ""
    default property alias content: holder.data

    readonly property int labelWidth: 64

    implicitHeight: holder.implicitHeight

    PlainLabel {
        width: root.labelWidth
        height: Theme.controlSize
        horizontalAlignment: Text.AlignRight
        text: root.label
        color: Theme.inkSecondary
        Accessible.ignored: true
    }

    Column {
        id: holder

        x: root.labelWidth + Theme.spaceL
        width: root.width - x
    }
}
