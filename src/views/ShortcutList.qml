pragma ComponentBehavior: Bound

import QtQuick

/// Every key that does something, in the order of the screens; a row without keys is the heading of those
/// that follow. The views act on them.
ListModel {
    ListElement { keys: ""; effect: "Everywhere" }
    ListElement { keys: "Ctrl+O"; effect: "Choose a folder" }
    ListElement { keys: "Ctrl+,"; effect: "Settings" }
    ListElement { keys: "F1"; effect: "These shortcuts" }
    ListElement { keys: "F10"; effect: "Menu" }
    ListElement { keys: "Alt+Left"; effect: "Back" }
    ListElement { keys: "Ctrl+W"; effect: "Close the window" }
    ListElement { keys: "Ctrl+Q"; effect: "Quit" }
    ListElement { keys: "Tab, Shift+Tab"; effect: "Next or previous control" }
    ListElement { keys: ""; effect: "Recent repositories" }
    ListElement { keys: "Up, Down, Home, End"; effect: "Choose a repository" }
    ListElement { keys: "Return"; effect: "Open it" }
    ListElement { keys: ""; effect: "List of files" }
    ListElement { keys: "Up or K, Down or J"; effect: "Previous or next file" }
    ListElement { keys: "Home, End, Page Up, Page Down"; effect: "Move farther" }
    ListElement { keys: "Return or Right"; effect: "Open the file" }
    ListElement { keys: ""; effect: "Changes of a file" }
    ListElement { keys: "Up or K, Down or J"; effect: "Previous or next change, also in the neighbouring file" }
    ListElement { keys: "Home, End"; effect: "First or last change" }
    ListElement { keys: "Page Up, Page Down, Space"; effect: "Scroll" }
    ListElement { keys: "Left, Right"; effect: "Scroll the code sideways" }
    ListElement { keys: "Shift and an arrow, Home, End or a page key"; effect: "Select code" }
    ListElement { keys: "Ctrl+A, Ctrl+C"; effect: "Select one side of the change, copy the selection" }
    ListElement { keys: "Return"; effect: "Ask about the change" }
    ListElement { keys: "Escape"; effect: "Back to the list of files" }
    ListElement { keys: ""; effect: "Question field" }
    ListElement { keys: "Return"; effect: "Send" }
    ListElement { keys: "Shift+Return"; effect: "New line" }
    ListElement { keys: "Alt+Up, Alt+Down"; effect: "Previous or next change" }
    ListElement { keys: "Escape"; effect: "Back to the code" }
}
