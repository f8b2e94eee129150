pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// A page of the setup sheet: what it is about, the form, the sentence that went wrong, and below a
/// line the ways back and on. What does not fit scrolls above that line.
FocusScope {
    id: root

    required property AISetupViewModel viewModel

    property string iconName: ""
    property string title: ""
    /// What the sheet is called with this page.
    property string name: root.title
    property string help: ""
    /// The remedy of the error, beside its sentence.
    property string errorLinkText: ""
    default property alias content: body.data
    property alias wayBack: leading.data
    property alias wayOn: trailing.data

    signal escaped
    signal errorLinkActivated

    implicitHeight: scroll.contentHeight + foot.height
    Keys.onEscapePressed: root.escaped()

    FocusFollower {
        view: scroll
        content: column
    }

    Flickable {
        id: scroll

        anchors.top: parent.top
        anchors.bottom: foot.top
        width: root.width
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: column.y + column.implicitHeight + Theme.spaceXl

        T.ScrollBar.vertical: ThinScrollBar {}

        Column {
            id: column

            x: Theme.spaceXxl
            y: Theme.spaceXxl
            width: root.width - 2 * x

            Rectangle {
                width: Theme.alertIconSize
                height: Theme.alertIconSize
                radius: height / 2
                visible: root.iconName !== ""
                color: Theme.accentSoft

                Icon {
                    anchors.centerIn: parent
                    name: root.iconName
                    size: Theme.iconLargeSize
                    tint: Theme.accent
                }
            }
            Item {
                width: 1
                height: Theme.spaceL
                visible: root.iconName !== ""
            }
            PlainLabel {
                width: column.width
                visible: text !== ""
                text: root.title
                font: Theme.titleFont
                line: Theme.titleLine
                color: Theme.inkHeading
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.role: Accessible.Heading
            }
            Item {
                width: 1
                height: Theme.spaceXs
                visible: root.help !== ""
            }
            PlainLabel {
                width: column.width
                visible: text !== ""
                text: root.help
                color: Theme.inkSecondary
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            Item {
                width: 1
                height: Theme.spaceL
                visible: root.title !== "" && body.implicitHeight > 0
            }
            Column {
                id: body

                width: column.width
            }
            Item {
                width: 1
                height: Theme.spaceL
                visible: failure.visible
            }
            ErrorBox {
                id: failure

                width: column.width
                visible: root.viewModel.errorMessage !== ""
                message: root.viewModel.errorMessage
                linkText: root.errorLinkText
                onLinkActivated: root.errorLinkActivated()
            }
        }
    }

    Item {
        id: foot

        anchors.bottom: parent.bottom
        width: root.width
        height: Theme.hairlineWidth + Theme.controlSize + 2 * Theme.footPaddingSize

        Rectangle {
            x: Theme.hairlineWidth
            width: parent.width - 2 * x
            height: Theme.hairlineWidth
            color: Theme.line
        }
        Row {
            id: leading

            x: Theme.spaceXxl
            y: Theme.hairlineWidth + Theme.footPaddingSize
            spacing: Theme.spaceS
        }
        Row {
            id: trailing

            anchors.right: parent.right
            anchors.rightMargin: Theme.spaceXxl
            y: Theme.hairlineWidth + Theme.footPaddingSize
            spacing: Theme.spaceS
        }
    }
}
