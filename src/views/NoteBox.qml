pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What a person had better know.
MessageBox {
    id: root

    iconName: "info"
    tint: Theme.noteInk
    ink: Theme.noteInk
    isSmall: true
    color: Theme.note
    border.color: Theme.noteLine
    Accessible.role: Accessible.Note
    Accessible.name: root.message
}
