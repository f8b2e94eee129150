pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The window of a check for updates. Closing it ends what is under way.
FramedWindow {
    id: root

    required property FeedSoftwareUpdater updater

    width: Theme.sheetWidthSize
    height: Theme.updateWindowHeightSize
    minimumWidth: Theme.sheetWidthSize
    maximumWidth: Theme.sheetWidthSize
    minimumHeight: Theme.updateWindowHeightSize
    title: qsTr("Software Update")
    onClosing: root.updater.dismiss()

    Connections {
        function onWindowRequested(): void {
            root.present();
        }

        target: root.updater
    }

    UpdateView {
        anchors.fill: parent
        objectName: "update"
        focus: true
        updater: root.updater
        title: root.title
        onClosed: root.close()
    }
}
