pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Takes a folder that is dropped anywhere on it, and says so while one is dragged over it.
DropArea {
    id: root

    signal folderDropped(url folder)

    keys: ["text/uri-list"]
    onEntered: drag => {
        drag.accepted = drag.urls.length > 0;
    }
    onDropped: drop => {
        drop.acceptProposedAction();
        root.folderDropped(drop.urls[0]);
    }

    Item {
        anchors.fill: parent
        visible: opacity > 0
        opacity: root.containsDrag ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.standardDuration
            }
        }

        Rectangle {
            anchors.fill: parent
            opacity: Theme.veilOpacity
            color: Theme.accentSoft
        }

        Rectangle {
            anchors.fill: parent
            anchors.margins: Theme.spaceM
            radius: Theme.sheetRadius
            color: "transparent"
            border.width: Theme.selectedWidth
            border.color: Theme.accent
        }

        Rectangle {
            anchors.centerIn: parent
            width: row.implicitWidth + 2 * Theme.spaceSection
            height: Theme.dropCardSize
            radius: Theme.bubbleRadius
            color: Theme.card
            border.width: Theme.hairlineWidth
            border.color: Theme.accentLine

            Row {
                id: row

                anchors.centerIn: parent
                spacing: Theme.spaceL

                Icon {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "folder-drop"
                    size: Theme.iconHeroSize
                    tint: Theme.accent
                }
                PlainLabel {
                    anchors.verticalCenter: parent.verticalCenter
                    text: qsTr("Drop the folder to open it")
                    font: Theme.headingFont
                    line: Theme.headingLine
                    color: Theme.inkHeading
                }
            }
        }
    }
}
