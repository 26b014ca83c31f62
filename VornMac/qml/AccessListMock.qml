import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.System
import Vorn.View

/// A drawing of the System Settings pane that the user needs, in its window. Vorn's row can be dragged into the real
/// pane, and glows while `pulses`.
Rectangle {
    id: root

    required property bool granted
    property bool pulses: false

    border.color: Theme.border
    border.width: 1
    color: Theme.background
    implicitHeight: pane.height + 2 * 18
    radius: Theme.cardRadius
    Accessible.role: Accessible.Grouping
    Accessible.name: Labels.settingsPane

    CardShadow {}
    Column {
        id: pane
        spacing: 6
        width: parent.width - 2 * x
        x: 18
        y: 18

        Row {
            spacing: 8

            Repeater {
                model: Theme.windowLights

                Rectangle {
                    required property color modelData

                    color: modelData
                    height: 12
                    radius: 6
                    width: 12
                }
            }
        }
        Words {
            color: Theme.secondary
            font: Theme.fonts.caption
            text: Labels.settingsPath
            topPadding: 10
            width: parent.width
        }
        Words {
            Accessible.ignored: true // the group already has this name
            font.family: Theme.fonts.title.family
            font.pixelSize: Theme.fonts.title.pixelSize * 0.7
            font.weight: Font.DemiBold
            text: Labels.settingsPane
            width: parent.width
        }
        Words {
            bottomPadding: 8
            color: Theme.secondary
            font: Theme.fonts.caption
            text: Labels.settingsExplanation
            width: parent.width
        }
        Rectangle {
            border.color: Theme.border
            border.width: 1
            color: Theme.card
            height: rows.height + footer.height
            radius: 12
            width: parent.width

            Column {
                id: rows
                width: parent.width

                AccessListRow {
                    dragged: ThisApplication.dragged
                    isOn: root.granted
                    name: Labels.thisApplication
                    pulses: root.pulses
                    width: parent.width
                }
                AccessListRow {
                    name: Labels.someTerminal
                    symbol: "terminal"
                    width: parent.width
                }
                AccessListRow {
                    isOn: true
                    name: Labels.someBackupUtility
                    symbol: "externaldrive"
                    width: parent.width
                }
            }
            Row {
                id: footer
                anchors.top: rows.bottom
                height: 30
                leftPadding: 10

                Repeater {
                    model: ["plus", "minus"]

                    Item {
                        required property string modelData
                        required property int index

                        height: 30
                        width: 28

                        Symbol {
                            anchors.centerIn: parent
                            color: Theme.secondary
                            height: 14
                            name: parent.modelData
                            width: 14
                        }
                        Rectangle {
                            anchors.right: parent.right
                            anchors.verticalCenter: parent.verticalCenter
                            color: Theme.divider
                            height: 14
                            visible: parent.index === 0
                            width: 1
                        }
                    }
                }
            }
        }
    }
}
