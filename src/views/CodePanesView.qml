pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Both sides of a file, one card for each hunk.
FocusScope {
    id: root

    required property DiffViewModel viewModel

    readonly property int scrollColumns: 8

    /// A held key scrolls at once: an animation would never catch up.
    property bool isKeyHeld: false

    /// Where an animated scroll has come to. The content itself stands on whole pixels, or else the
    /// rows' edges would blur.
    property real movingY: 0

    onMovingYChanged: flick.contentY = Math.round(root.movingY)

    function scrollTo(y: real, isAnimated: bool): void {
        const target = Math.round(Math.max(0, Math.min(y, flick.contentHeight - flick.height)));
        scrolling.stop();
        if (isAnimated && !root.isKeyHeld && Theme.scrollDuration > 0) {
            scrolling.from = flick.contentY;
            scrolling.to = target;
            scrolling.start();
        } else {
            flick.contentY = target;
        }
    }

    function scrollSideways(x: real): void {
        panes.contentX = Math.round(Math.max(0, Math.min(x, panes.maximumContentX)));
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    Rectangle {
        id: header

        width: root.width
        height: Theme.paneHeaderSize
        z: 1
        color: Theme.window

        PlainLabel {
            x: Theme.beforeTextInsetSize
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Before")
            font: Theme.captionFont
            line: Theme.captionLine
            color: Theme.inkSecondary
        }
        PlainLabel {
            x: Math.floor(root.width / 2) + Theme.afterTextInsetSize
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("After")
            font: Theme.captionFont
            line: Theme.captionLine
            color: Theme.inkSecondary
        }
        Rectangle {
            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.hairlineWidth
            color: Theme.line
        }
    }

    // A control would be announced as what Qt takes it for, so an item around it stands for it.
    Item {
        id: list

        anchors.top: header.bottom
        anchors.bottom: sideways.visible ? sideways.top : parent.bottom
        width: root.width
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Changes in %1").arg(words.name)
        Accessible.focusable: true
        Accessible.focused: keyboard.activeFocus

        // The one tab stop of the panes, below them, so that it takes no press from them.
        T.Control {
            id: keyboard

            anchors.fill: parent
            focus: true
            focusPolicy: Qt.TabFocus
            Accessible.ignored: true

            Keys.onPressed: event => {
                const page = flick.height - 2 * Theme.codeRowSize;
                event.accepted = true;
                root.isKeyHeld = event.isAutoRepeat;
                if (panes.takeSelectionKey(event.key, event.modifiers)) {
                    return;
                }
                switch (event.key) {
                case Qt.Key_Down:
                case Qt.Key_J:
                    root.viewModel.goNext();
                    break;
                case Qt.Key_Up:
                case Qt.Key_K:
                    root.viewModel.goPrevious();
                    break;
                case Qt.Key_Home:
                    root.viewModel.select(0);
                    break;
                case Qt.Key_End:
                    root.viewModel.select(root.viewModel.hunkCount - 1);
                    break;
                case Qt.Key_PageDown:
                case Qt.Key_Space:
                    root.scrollTo(flick.contentY + page, false);
                    break;
                case Qt.Key_PageUp:
                    root.scrollTo(flick.contentY - page, false);
                    break;
                case Qt.Key_Left:
                    root.scrollSideways(panes.contentX - root.scrollColumns * panes.columnWidth);
                    break;
                case Qt.Key_Right:
                    root.scrollSideways(panes.contentX + root.scrollColumns * panes.columnWidth);
                    break;
                case Qt.Key_Escape:
                    root.viewModel.goBack();
                    break;
                default:
                    event.accepted = false;
                }
            }
        }

        Flickable {
            id: flick

            anchors.fill: parent
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            contentWidth: width
            contentHeight: panes.contentHeight
            interactive: false

            CodePanesItem {
                id: panes

                objectName: "panes"
                y: flick.contentY
                width: flick.width
                height: flick.height
                diff: root.viewModel
                theme: Theme
                isDark: Theme.dark
                contentY: flick.contentY
                onMaximumContentXChanged: root.scrollSideways(contentX)
                onPressed: keyboard.forceActiveFocus(Qt.MouseFocusReason)
                onCardClicked: card => root.viewModel.select(card)
                onScrollRequested: (x, y) => {
                    root.scrollSideways(x);
                    root.scrollTo(y, false);
                }
            }

            Repeater {
                model: panes.visibleCards

                HunkCardView {
                    x: Theme.spaceM
                    y: cardTop
                    width: flick.width - 2 * Theme.spaceM
                    onSelected: root.viewModel.select(hunkIndex)
                }
            }

            // Each takes one direction of a wheel or touchpad.
            WheelHandler {
                acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
                orientation: Qt.Vertical
                target: null
                onWheel: event => {
                    const distance = event.pixelDelta.y !== 0 ? event.pixelDelta.y : event.angleDelta.y / 2;
                    if (event.modifiers & Qt.ShiftModifier) {
                        root.scrollSideways(panes.contentX - distance);
                    } else {
                        root.scrollTo(flick.contentY - distance, false);
                    }
                }
            }

            WheelHandler {
                acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
                orientation: Qt.Horizontal
                target: null
                onWheel: event => root.scrollSideways(panes.contentX - (event.pixelDelta.x !== 0 ? event.pixelDelta.x : event.angleDelta.x / 2))
            }
        }
    }

    FocusRing {
        anchors.fill: list
        anchors.margins: 0
        visible: keyboard.visualFocus
    }

    NumberAnimation {
        id: scrolling

        target: root
        property: "movingY"
        duration: Theme.scrollDuration
        easing.type: Easing.InOutQuad
    }

    ThinScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        size: flick.visibleArea.heightRatio
        position: flick.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            root.scrollTo(position * flick.contentHeight, false);
        }
    }

    Rectangle {
        id: sideways

        readonly property real span: root.width / 2
        readonly property real range: sideways.span + panes.maximumContentX

        anchors.bottom: parent.bottom
        width: root.width
        height: Theme.scrollBarSize
        visible: panes.maximumContentX > 0
        color: Theme.surface

        Rectangle {
            width: parent.width
            height: Theme.hairlineWidth
            color: Theme.line
        }

        ThinScrollBar {
            x: Theme.spaceM
            width: parent.width - 2 * Theme.spaceM
            height: parent.height
            orientation: Qt.Horizontal
            size: sideways.span / sideways.range
            position: panes.contentX / sideways.range
            onPositionChanged: if (pressed) {
                root.scrollSideways(position * sideways.range);
            }
        }
    }

    ErrorBox {
        anchors.top: header.bottom
        anchors.topMargin: Theme.spaceM
        x: Theme.spaceM
        width: root.width - 2 * Theme.spaceM
        visible: message !== ""
        message: root.viewModel.errorMessage
    }

    PlainLabel {
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: header.bottom
        anchors.topMargin: Theme.spacePage
        visible: words.hasNothingToShow
        text: qsTr("There are no lines to show: the file is binary, empty, or only its mode has changed.")
        color: Theme.inkTertiary
    }

    DiffToolbarPresenter {
        id: words

        diff: root.viewModel
    }

    Connections {
        function onSelectedHunkIndexChanged(): void {
            root.scrollTo(panes.contentYShowing(root.viewModel.selectedHunkIndex), true);
            root.isKeyHeld = false;
        }
        function onHunksChanged(): void {
            root.scrollTo(panes.contentYShowing(root.viewModel.selectedHunkIndex), false);
        }

        target: root.viewModel
    }
}
