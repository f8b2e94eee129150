pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A text that a model or a person wrote, in any number of lines, to be read and copied. Its looks
/// come beside it: the item itself shows plain text, which names no picture and leads nowhere.
TextEdit {
    id: root

    property alias source: prose.source
    property alias isMarkdown: prose.isMarkdown

    /// Without a wrapped line. Unlike the implicit width it costs no second layout of the text.
    readonly property alias naturalWidth: prose.naturalWidth

    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    readOnly: true
    selectByMouse: true
    activeFocusOnPress: false
    // A line of a document stands at the foot of its height, one of a label in the middle.
    topPadding: -Theme.proseRiseSize
    bottomPadding: Theme.proseRiseSize
    font: Theme.bodyFont
    color: Theme.ink
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    Accessible.role: Accessible.StaticText
    Accessible.name: prose.text

    // Only a selection takes the keyboard, which copies it: a click leaves it where it is.
    onSelectedTextChanged: if (root.selectedText !== "") {
        root.forceActiveFocus(Qt.MouseFocusReason);
    }
    Keys.onEscapePressed: event => {
        root.deselect();
        event.accepted = false;
    }

    ProseDocument {
        id: prose

        document: root.textDocument
        line: Theme.bodyLine
        strongFont: Theme.bodyBoldFont
        codeFont: Theme.codeFont
    }
}
