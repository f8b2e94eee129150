pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What the model says of the selected hunk, as it streams in and when it is there.
Item {
    id: root

    required property DiffViewModel viewModel

    signal settingsRequested

    readonly property bool hasExplanation: explanation.state !== ExplanationPresenter.None

    signal escaped

    implicitHeight: flick.contentHeight
    Keys.onEscapePressed: root.escaped()

    ExplanationPresenter {
        id: explanation

        diff: root.viewModel
    }

    Flickable {
        id: flick

        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        contentWidth: width
        contentHeight: column.y + column.implicitHeight + Theme.explanationFootSize
        Accessible.role: Accessible.Section
        Accessible.name: heading.text

        Item {
            id: title

            x: Theme.spaceXl
            y: Theme.spaceL
            width: flick.width - 2 * Theme.spaceXl
            height: Theme.bodyLine
            visible: root.hasExplanation

            PlainLabel {
                id: heading

                text: qsTr("This change")
                font: Theme.bodyBoldFont
                color: Theme.inkHeading
                Accessible.role: Accessible.Heading
            }

            Rectangle {
                anchors.right: parent.right
                width: tag.width + 2 * Theme.spaceS
                height: Theme.badgeSize
                visible: explanation.tag !== ""
                radius: Theme.badgeRadius
                color: Theme.accentSoft

                PlainLabel {
                    id: tag

                    anchors.verticalCenter: parent.verticalCenter
                    x: Theme.spaceS
                    width: Math.min(implicitWidth, Theme.tagMaxSize - 2 * Theme.spaceS)
                    text: explanation.tag
                    font: Theme.smallFont
                    line: Theme.smallLine
                    color: Theme.accent
                }
            }
        }

        Column {
            id: column

            x: title.x
            y: title.y + title.height + Theme.headingGapSize
            width: title.width
            spacing: Theme.spaceM
            visible: root.hasExplanation

            Row {
                visible: explanation.state === ExplanationPresenter.Reading
                spacing: Theme.spaceS

                ActivityDots {
                    anchors.verticalCenter: parent.verticalCenter
                }
                PlainLabel {
                    text: qsTr("Reading the hunk…")
                    color: Theme.inkTertiary
                }
            }

            ProseText {
                width: column.width
                visible: source !== ""
                source: explanation.prose
                Accessible.role: Accessible.Paragraph
            }

            ActivityDots {
                visible: explanation.state === ExplanationPresenter.Streaming
            }

            Column {
                visible: explanation.points.length > 0
                width: column.width
                spacing: Theme.bulletSize

                Repeater {
                    model: explanation.points

                    Item {
                        id: point

                        required property string modelData

                        width: column.width
                        height: pointLabel.implicitHeight

                        Rectangle {
                            y: Theme.bodyLine / 2 - 2
                            width: Theme.spaceXs
                            height: Theme.spaceXs
                            color: Theme.accent
                        }
                        ProseText {
                            id: pointLabel

                            x: Theme.rowGapSize
                            width: parent.width - x
                            source: point.modelData
                        }
                    }
                }
            }

            ErrorBox {
                width: column.width
                visible: message !== ""
                message: explanation.message
                linkText: explanation.recoveryLabel
                onLinkActivated: root.settingsRequested()
            }
        }
    }

    ThinScrollBar {
        anchors.top: flick.top
        anchors.bottom: flick.bottom
        anchors.right: parent.right
        size: flick.visibleArea.heightRatio
        position: flick.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            flick.contentY = position * flick.contentHeight;
        }
    }
}
