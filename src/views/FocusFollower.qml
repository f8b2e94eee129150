import QtQuick
import Vantrel

/// Scrolls the control that the keyboard comes to into sight, in a window lower than what it shows.
QtObject {
    id: root

    required property Flickable view
    /// What the view scrolls.
    required property Item content

    /// What the keyboard is on, wherever in the window.
    readonly property Item focusedItem: root.view.Window.activeFocusItem

    onFocusedItemChanged: {
        let ancestor = root.focusedItem;
        while (ancestor !== null && ancestor !== root.content) {
            ancestor = ancestor.parent;
        }
        if (ancestor === null) {
            return;
        }
        const top = root.focusedItem.mapToItem(root.view.contentItem, 0, 0).y - Theme.spaceXl;
        const bottom = top + root.focusedItem.height + 2 * Theme.spaceXl;
        root.view.contentY = Math.max(0, Math.max(Math.min(root.view.contentY, top), bottom - root.view.height));
    }
}
