pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The model servers of this machine, of which one that has models is chosen. One stop of the keyboard,
/// whose arrows choose; the links to servers that do not run come after it.
FocusScope {
    id: root

    required property AISetupViewModel viewModel
    required property string label

    implicitHeight: rows.implicitHeight + 2 * Theme.hairlineWidth
    Accessible.role: Accessible.Grouping
    Accessible.name: root.label
    Accessible.focusable: true
    Accessible.focused: keyboard.activeFocus

    // A control would be announced as what Qt takes it for, so the item around it stands for it.
    T.Control {
        id: keyboard

        anchors.fill: parent
        focus: true
        focusPolicy: Qt.StrongFocus
        Accessible.ignored: true
        Keys.onUpPressed: root.viewModel.stepLocalServer(-1)
        Keys.onDownPressed: root.viewModel.stepLocalServer(1)

        background: Rectangle {
            radius: Theme.cardRadius
            color: Theme.card
            border.width: Theme.hairlineWidth
            border.color: Theme.lineStrong

            FocusRing {
                visible: keyboard.visualFocus
                radius: Theme.cardRadius
            }
        }
    }

    Column {
        id: rows

        x: Theme.hairlineWidth
        y: Theme.hairlineWidth
        width: root.width - 2 * x

        Repeater {
            model: root.viewModel.localServerNames

            Item {
                id: place

                required property int index
                required property string modelData

                readonly property bool isRunning: root.viewModel.localServersRunning[place.index]

                width: rows.width
                height: row.implicitHeight

                ServerRow {
                    id: row

                    width: link.visible ? link.x - Theme.spaceS : place.width
                    enabled: root.viewModel.localServersUsable[place.index]
                    name: place.modelData
                    status: root.viewModel.localServerStatusTexts[place.index]
                    isRunning: place.isRunning
                    isChosen: place.index === root.viewModel.selectedLocalServerIndex
                    onPressed: keyboard.forceActiveFocus(Qt.MouseFocusReason)
                    onClicked: root.viewModel.chooseLocalServer(place.index)
                }
                ExternalLink {
                    id: link

                    anchors.right: parent.right
                    anchors.rightMargin: Theme.spaceM
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.viewModel.localServersMissing[place.index]
                    iconName: "external"
                    text: qsTr("Get %1").arg(place.modelData)
                    onClicked: root.viewModel.openDownloadPage(place.index)
                }
                Rectangle {
                    width: place.width
                    height: Theme.hairlineWidth
                    visible: place.index > 0
                    color: Theme.line
                }
            }
        }
    }
}
