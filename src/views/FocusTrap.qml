import QtQuick
import QtQuick.Templates as T

/// Keeps the Tab key within an item that lies over the rest, while it is active. The pointer may take
/// the keyboard elsewhere, to the title bar.
Item {
    id: root

    required property Item within
    required property bool isActive

    function contains(item: Item): bool {
        let ancestor = item;
        while (ancestor !== null && ancestor !== root.within) {
            ancestor = ancestor.parent;
        }
        return ancestor !== null;
    }

    function bringBack(): void {
        const control = root.Window.activeFocusItem as T.Control;
        if (!root.isActive || control === null || root.contains(control)) {
            return;
        }
        const isForward = control.focusReason === Qt.TabFocusReason;
        if (!isForward && control.focusReason !== Qt.BacktabFocusReason) {
            return;
        }
        let next = control.nextItemInFocusChain(isForward);
        while (next !== control && !root.contains(next)) {
            next = next.nextItemInFocusChain(isForward);
        }
        next.forceActiveFocus(control.focusReason);
    }

    // A focus that is moved in the middle of a change comes back.
    Timer {
        id: afterChange

        interval: 0
        onTriggered: root.bringBack()
    }

    Connections {
        function onActiveFocusItemChanged(): void {
            afterChange.restart();
        }

        target: root.Window.window
    }
}
