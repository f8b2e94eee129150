pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The setup of a provider, a sheet over the screen, page by page.
FocusScope {
    id: root

    required property AISetupViewModel viewModel

    signal dismissed

    readonly property real topMargin: Math.max(Theme.spaceL, Math.min(Theme.sheetTopSize, (root.height - page.implicitHeight) / 2))

    /// In the order of the view model's steps.
    readonly property list<string> pages: ["SetupChoosePage.qml", "SetupSignInPage.qml", "SetupPastePage.qml", "SetupLocalPage.qml", "SetupDonePage.qml"]
    readonly property SetupPage shownPage: page.item as SetupPage

    function showPage(): void {
        const isExplaining = root.viewModel.isShowingKeychainNotice;
        page.setSource(isExplaining ? "SetupKeychainPage.qml" : root.pages[root.viewModel.step], {
            viewModel: root.viewModel
        });
    }

    Component.onCompleted: root.showPage()

    FocusTrap {
        within: root
        isActive: root.visible
    }

    Connections {
        function onStepChanged(): void {
            root.showPage();
        }
        function onIsShowingKeychainNoticeChanged(): void {
            root.showPage();
        }

        target: root.viewModel
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: event => event.accepted = true
        }
    }

    FloatingSheet {
        anchors.horizontalCenter: parent.horizontalCenter
        y: root.topMargin
        width: Math.min(Theme.sheetWidthSize, parent.width - 2 * Theme.spaceM)
        height: Math.min(page.implicitHeight, root.height - root.topMargin - Theme.spaceL)
        radius: Theme.sheetRadius
        Accessible.role: Accessible.Dialog
        Accessible.name: root.shownPage === null ? "" : root.shownPage.name
        Accessible.description: root.shownPage === null ? "" : root.shownPage.help

        Loader {
            id: page

            anchors.fill: parent
            focus: true
            onLoaded: (page.item as Item).forceActiveFocus()
        }
    }

    Connections {
        function onDismissed(): void {
            root.dismissed();
        }

        target: page.item
        ignoreUnknownSignals: true
    }
}
