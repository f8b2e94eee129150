pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// Rows that stand for files while the listing is read. They come only when that takes a while, so
/// that a quick listing does not flash.
Rectangle {
    id: root

    required property bool isActive

    /// The first bar's width in each row, so that the rows do not look like a table.
    readonly property list<int> barWidths: [180, 240, 150, 210, 260, 190, 230, 170, 220]

    property bool isPatienceOver: false

    objectName: "skeleton"
    implicitHeight: rows.height + 2 * Theme.spaceXs + Theme.hairlineWidth
    visible: root.isActive && root.isPatienceOver
    clip: true
    radius: Theme.cardRadius
    color: Theme.card
    border.width: Theme.hairlineWidth
    border.color: Theme.line
    Accessible.ignored: true

    Timer {
        interval: Theme.patienceDuration
        running: root.isActive
        onRunningChanged: if (running) {
            root.isPatienceOver = false;
        }
        onTriggered: root.isPatienceOver = true
    }

    Column {
        id: rows

        property real strength: 1

        y: Theme.spaceXs + Theme.hairlineWidth
        width: root.width
        opacity: Theme.reducesMotion ? 1 : rows.strength

        Repeater {
            model: root.barWidths

            Item {
                id: row

                required property int index
                required property int modelData

                width: rows.width
                height: Theme.fileRowSize + Theme.hairlineWidth

                Rectangle {
                    x: Theme.spaceXl + Theme.hairlineWidth
                    y: (Theme.fileRowSize - height) / 2
                    width: Theme.badgeSize
                    height: Theme.badgeSize
                    radius: Theme.badgeRadius
                    color: Theme.sunken
                }
                Rectangle {
                    x: Theme.rowTextInsetSize
                    y: Theme.rowGapSize
                    width: row.modelData
                    height: Theme.spaceS
                    radius: height / 2
                    color: Theme.sunken
                }
                Rectangle {
                    x: Theme.rowTextInsetSize
                    y: Theme.rowBarTopSize
                    width: row.modelData + Theme.rowBarStepSize
                    height: Theme.spaceS
                    radius: height / 2
                    color: Theme.sunken
                    opacity: Theme.stillOpacity
                }
                Rectangle {
                    x: Theme.spaceXl + Theme.hairlineWidth
                    y: Theme.fileRowSize
                    width: row.width - 2 * x
                    height: Theme.hairlineWidth
                    visible: row.index < root.barWidths.length - 1
                    color: Theme.line
                }
            }
        }

        PulseAnimation {
            target: rows
            running: root.visible && !Theme.reducesMotion
        }
    }
}
