pragma ComponentBehavior: Bound

import QtQuick

/// Every key that does something, in the order of the screens. The views act on them.
ListModel {
    ListElement { place: "Everywhere"; keys: "Ctrl+O"; effect: "Choose a folder" }
    ListElement { place: "Everywhere"; keys: "Ctrl+,"; effect: "Settings" }
    ListElement { place: "Everywhere"; keys: "F1"; effect: "These shortcuts" }
    ListElement { place: "Everywhere"; keys: "F10"; effect: "Menu" }
    ListElement { place: "Everywhere"; keys: "Alt+Left"; effect: "Back" }
    ListElement { place: "Everywhere"; keys: "Ctrl+W"; effect: "Close the window" }
    ListElement { place: "Everywhere"; keys: "Ctrl+Q"; effect: "Quit" }
    ListElement { place: "Everywhere"; keys: "Tab, Shift+Tab"; effect: "Next or previous control" }
    ListElement { place: "Recent repositories"; keys: "Up, Down, Home, End"; effect: "Choose a repository" }
    ListElement { place: "Recent repositories"; keys: "Return"; effect: "Open it" }
    ListElement { place: "List of files"; keys: "Up or K, Down or J"; effect: "Previous or next file" }
    ListElement { place: "List of files"; keys: "Home, End, Page Up, Page Down"; effect: "Move farther" }
    ListElement { place: "List of files"; keys: "Return or Right"; effect: "Open the file" }
    ListElement { place: "Changes of a file"; keys: "Up or K, Down or J"; effect: "Previous or next change, also in the neighbouring file" }
    ListElement { place: "Changes of a file"; keys: "Home, End"; effect: "First or last change" }
    ListElement { place: "Changes of a file"; keys: "Page Up, Page Down, Space"; effect: "Scroll" }
    ListElement { place: "Changes of a file"; keys: "Left, Right"; effect: "Scroll the code sideways" }
    ListElement { place: "Changes of a file"; keys: "Shift and an arrow, Home, End or a page key"; effect: "Select code" }
    ListElement { place: "Changes of a file"; keys: "Ctrl+A, Ctrl+C"; effect: "Select one side of the change, copy the selection" }
    ListElement { place: "Changes of a file"; keys: "Return"; effect: "Ask about the change" }
    ListElement { place: "Changes of a file"; keys: "Escape"; effect: "Back to the list of files" }
    ListElement { place: "Question field"; keys: "Return"; effect: "Send" }
    ListElement { place: "Question field"; keys: "Shift+Return"; effect: "New line" }
    ListElement { place: "Question field"; keys: "Alt+Up, Alt+Down"; effect: "Previous or next change" }
    ListElement { place: "Question field"; keys: "Escape"; effect: "Back to the code" }
}
