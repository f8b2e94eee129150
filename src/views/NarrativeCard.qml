pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The full picture of the change set, and what its badges mean. While the narrative is made a quiet
/// placeholder stands in its place.
Rectangle {
    id: root

    required property FileListModel files
    required property bool isLoading

    readonly property int countsWidth: Theme.statusColumnSize
    readonly property bool hasNarrative: root.files.narrative !== ""

    implicitHeight: Math.max(text.height, counts.height) + 2 * Theme.spaceL + 2 * Theme.hairlineWidth
    radius: Theme.cardRadius
    color: Theme.card
    border.width: Theme.hairlineWidth
    border.color: Theme.line
    Accessible.role: Accessible.Section
    Accessible.name: caption.text

    Column {
        id: text

        x: Theme.spaceXl + Theme.hairlineWidth
        y: Theme.spaceL + Theme.hairlineWidth
        width: root.width - root.countsWidth - 2 * x
        spacing: Theme.spaceXs

        PlainLabel {
            id: caption

            text: qsTr("Full picture")
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkSecondary
        }

        PlainLabel {
            width: Math.min(parent.width, Theme.proseMeasureMaxSize)
            visible: root.hasNarrative
            text: root.files.narrative
            font: Theme.proseFont
            line: Theme.proseLine
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.role: Accessible.Paragraph
        }

        Row {
            visible: root.isLoading
            height: Theme.proseLine
            spacing: Theme.fieldPaddingSize

            ActivityDots {
                anchors.verticalCenter: parent.verticalCenter
            }
            PlainLabel {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Reading all changes…")
                color: Theme.inkSecondary
            }
        }
        Repeater {
            model: [0.92, 0.88]

            Item {
                id: line

                required property real modelData

                width: text.width
                height: Theme.spaceXl
                visible: root.isLoading

                SkeletonBar {
                    y: Theme.spaceS
                    width: Math.min(parent.width, Theme.proseMeasureMaxSize) * line.modelData
                }
            }
        }
    }

    Rectangle {
        x: root.width - root.countsWidth - Theme.hairlineWidth
        y: Theme.hairlineWidth
        width: Theme.hairlineWidth
        height: root.height - 2 * Theme.hairlineWidth
        color: Theme.line
    }

    Column {
        id: counts

        x: root.width - root.countsWidth + Theme.spaceXl
        y: text.y
        spacing: Theme.bulletSize

        Repeater {
            model: [
                {
                    status: "M",
                    count: root.files.modifiedCount,
                    words: qsTr("%1 modified")
                },
                {
                    status: "A",
                    count: root.files.addedCount,
                    words: qsTr("%1 added")
                },
                {
                    status: "D",
                    count: root.files.deletedCount,
                    words: qsTr("%1 deleted")
                }
            ]

            Row {
                id: count

                required property var modelData

                visible: count.modelData.count > 0
                spacing: Theme.spaceS + Theme.spaceXxs

                StatusBadge {
                    status: count.modelData.status
                }
                PlainLabel {
                    text: count.modelData.words.arg(count.modelData.count)
                    font: Theme.smallFont
                    color: Theme.inkSecondary
                }
            }
        }
    }
}
