import QtQuick
import Vorn.Components

/// The chat in numbers. Without `dates` there is no row for them.
Rectangle {
    id: root

    required property string messageCount
    required property string promptCount
    required property string replyCount
    required property string dates

    border.color: Theme.border
    border.width: 1
    color: Theme.card
    implicitHeight: rows.height
    radius: 16

    Column {
        id: rows
        width: parent.width

        StatisticsRow {
            hasDivider: false
            label: "Messages"
            value: root.messageCount
            width: parent.width
        }
        StatisticsRow {
            label: "Your messages"
            value: root.promptCount
            width: parent.width
        }
        StatisticsRow {
            label: "Nimbrel replies"
            value: root.replyCount
            width: parent.width
        }
        StatisticsRow {
            label: "Dates"
            value: root.dates
            visible: root.dates.length > 0
            width: parent.width
        }
    }
}
