import QtQuick
import Vorn.Components

/// The chat in numbers: a row for each label, with its value.
Rectangle {
    id: root

    required property var labels
    required property var values

    border.color: Theme.border
    border.width: 1
    color: Theme.card
    implicitHeight: rows.height
    radius: 16

    Column {
        id: rows
        width: parent.width

        Repeater {
            model: root.labels.length

            StatisticsRow {
                required property int index

                // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
                // qmllint disable unqualified
                hasDivider: index > 0
                label: root.labels[index] ?? ""
                value: root.values[index] ?? ""
                width: rows.width
                // qmllint enable unqualified
            }
        }
    }
}
