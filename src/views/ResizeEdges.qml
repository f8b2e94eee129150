pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The edges and corners of a window without a frame of the desktop's: a press there begins the window
/// manager's own resizing.
Item {
    id: root

    readonly property list<int> edges: [
        Qt.TopEdge, Qt.BottomEdge, Qt.LeftEdge, Qt.RightEdge, //
        Qt.TopEdge | Qt.LeftEdge, Qt.TopEdge | Qt.RightEdge, //
        Qt.BottomEdge | Qt.LeftEdge, Qt.BottomEdge | Qt.RightEdge
    ]

    function cursorOf(edges: int): int {
        const isVertical = (edges & (Qt.TopEdge | Qt.BottomEdge)) !== 0;
        const isHorizontal = (edges & (Qt.LeftEdge | Qt.RightEdge)) !== 0;
        if (isVertical && isHorizontal) {
            const isFalling = edges === (Qt.TopEdge | Qt.LeftEdge) || edges === (Qt.BottomEdge | Qt.RightEdge);
            return isFalling ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor;
        }
        return isVertical ? Qt.SizeVerCursor : Qt.SizeHorCursor;
    }

    Repeater {
        model: root.edges

        MouseArea {
            required property int modelData

            readonly property bool isAtTop: (modelData & Qt.TopEdge) !== 0
            readonly property bool isAtBottom: (modelData & Qt.BottomEdge) !== 0
            readonly property bool isAtLeft: (modelData & Qt.LeftEdge) !== 0
            readonly property bool isAtRight: (modelData & Qt.RightEdge) !== 0

            x: isAtRight ? root.width - width : 0
            y: isAtBottom ? root.height - height : 0
            width: isAtLeft || isAtRight ? Theme.resizeEdgeSize : root.width
            height: isAtTop || isAtBottom ? Theme.resizeEdgeSize : root.height
            cursorShape: root.cursorOf(modelData)
            onPressed: root.Window.window.startSystemResize(modelData)
        }
    }
}
