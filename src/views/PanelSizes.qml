import QtQuick

/// How large the person has made the panel beside or below the panes; 0 stands for the default. Kept
/// outside of the screen, which is made anew for each file.
QtObject {
    property real sidebarWidth: 0
    property real bottomHeight: 0
}
