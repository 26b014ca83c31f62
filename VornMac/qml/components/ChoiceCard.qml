import QtQuick

/// Choices in a column with dividers. The frame is emphasised once all boxes are ticked.
Rectangle {
    id: root

    default property alias choices: rows.data

    readonly property var chips: Array.from(rows.children).filter(child => child instanceof ChoiceChip)
    readonly property bool allMade: chips.every(chip => chip.isOn)

    border.color: allMade ? Theme.ink : Theme.border
    border.width: allMade ? Math.round(1.5 * Screen.devicePixelRatio) / Screen.devicePixelRatio : 1 // whole pixels
    color: Theme.card
    implicitHeight: rows.implicitHeight
    radius: Theme.controlRadius

    Column {
        id: rows
        spacing: 1
        width: root.width
    }
    Repeater {
        model: root.chips.slice(1)

        Rectangle {
            required property ChoiceChip modelData

            color: Theme.divider
            height: 1
            // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
            // qmllint disable unqualified
            width: root.width - x - 1
            // qmllint enable unqualified
            x: modelData.leftPadding
            y: modelData.y - 1
        }
    }
}
