import QtQuick
import Vorn.Components
import Vorn.View

/// The pane of System Settings that the user looks for, drawn.
Column {
    id: root

    required property bool granted

    spacing: 6
    Accessible.role: Accessible.Grouping
    Accessible.name: Labels.settingsPane

    Words {
        color: Theme.secondary
        font: Theme.fonts.caption
        text: Labels.settingsPath
        width: parent.width
    }
    Words {
        Accessible.ignored: true // the group is called so
        font.family: Theme.fonts.title.family
        font.pixelSize: Theme.fonts.title.pixelSize * 0.7
        font.weight: Font.DemiBold
        text: Labels.settingsPane
        width: parent.width
    }
    Words {
        bottomPadding: 10
        color: Theme.secondary
        font: Theme.fonts.caption
        text: Labels.settingsExplanation
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
                name: Labels.thisApplication
                width: parent.width
            }
            AccessListRow {
                name: Labels.someTerminal
                symbol: "terminal"
                width: parent.width
            }
            AccessListRow {
                hasDivider: false
                isOn: true
                name: Labels.someBackupUtility
                symbol: "externaldrive"
                width: parent.width
            }
        }
    }
}
