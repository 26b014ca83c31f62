import QtQuick

/// The user's progress: one dot for each step, the current one longer.
Row {
    id: root

    required property int current // from 0
    required property int total
    required property string position // the same for a screen reader

    spacing: 6
    Accessible.role: Accessible.StaticText
    Accessible.name: root.position

    Repeater {
        model: root.total

        Rectangle {
            required property int index

            // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
            // qmllint disable unqualified
            color: index === root.current ? Theme.ink : index < root.current ? Theme.tertiary : Theme.border
            height: 6
            radius: 3
            width: index === root.current ? 20 : 6
            // qmllint enable unqualified
        }
    }
}
