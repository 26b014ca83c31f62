import QtQuick
import Vorn.Components

/// The pane of System Settings that the user looks for, drawn.
Column {
    id: root

    required property bool granted

    spacing: 6
    Accessible.role: Accessible.Grouping
    Accessible.name: "Full Disk Access"

    Words {
        color: Theme.secondary
        font: Theme.fonts.caption
        text: "System Settings → Privacy & Security"
        width: parent.width
    }
    Words {
        Accessible.ignored: true // the group is called so
        font.family: Theme.fonts.title.family
        font.pixelSize: Theme.fonts.title.pixelSize * 0.7
        font.weight: Font.DemiBold
        text: "Full Disk Access"
        width: parent.width
    }
    Words {
        bottomPadding: 10
        color: Theme.secondary
        font: Theme.fonts.caption
        text: "Allow the applications below to access data like Mail, Messages, Safari and Time Machine backups."
        width: parent.width
    }
    Rectangle {
        border.color: Theme.border
        border.width: 1
        color: Theme.card
        height: rows.height
        radius: 14
        width: parent.width

        Column {
            id: rows
            width: parent.width

            AccessListRow {
                isOn: root.granted
                name: "Vorn"
                width: parent.width
            }
            AccessListRow {
                name: "Terminal"
                symbol: "terminal"
                width: parent.width
            }
            AccessListRow {
                hasDivider: false
                isOn: true
                name: "Backup Utility"
                symbol: "externaldrive"
                width: parent.width
            }
        }
    }
}
