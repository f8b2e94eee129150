pragma ComponentBehavior: Bound
import QtQuick
import Vantrel

/// One file: the toolbar, both panes, and the explanation beside or, in a narrow window, below them.
FocusScope {
    id: root

    required property DiffViewModel viewModel

    readonly property bool isNarrow: root.width < 1080
    readonly property int sidebarWidth: Math.max(340, Math.min(480, 0.297 * root.width))

    Component.onCompleted: root.viewModel.load()

    DiffToolbarView {
        id: toolbar

        width: root.width
        viewModel: root.viewModel
    }

    CodePanesView {
        id: panes

        anchors.top: toolbar.bottom
        width: root.isNarrow ? root.width : root.width - root.sidebarWidth
        height: root.height - y - (root.isNarrow ? 208 : 0)
        focus: true
        viewModel: root.viewModel
    }

    Rectangle {
        x: root.isNarrow ? 0 : panes.width
        y: root.isNarrow ? panes.y + panes.height : toolbar.height
        width: root.width - x
        height: root.height - y
        color: Theme.surface

        Rectangle {
            width: root.isNarrow ? parent.width / 2 : parent.width
            height: root.isNarrow ? parent.height : Math.min(sidebar.implicitHeight, 0.55 * parent.height)
            color: Theme.card

            ExplanationSidebarView {
                id: sidebar

                anchors.fill: parent
                viewModel: root.viewModel
            }

            Rectangle {
                x: root.isNarrow ? parent.width : 0
                y: root.isNarrow ? 0 : parent.height
                width: root.isNarrow ? Theme.hairlineWidth : parent.width
                height: root.isNarrow ? parent.height : Theme.hairlineWidth
                color: Theme.line
            }
        }

        Rectangle {
            width: root.isNarrow ? parent.width : Theme.hairlineWidth
            height: root.isNarrow ? Theme.hairlineWidth : parent.height
            color: Theme.line
        }
    }

    Shortcut {
        sequences: ["Alt+Left"]
        onActivated: root.viewModel.goBack()
    }
}
