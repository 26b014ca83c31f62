import QtQuick
import Vorn.Drawing

/// Leads to the previous step.
PushButton {
    id: root

    leftPadding: 8
    rightPadding: 14

    contentItem: Row {
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            height: 16
            name: "chevron.left"
            width: 16
        }
        ButtonText {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            font: root.font
            text: root.label
        }
    }
    background: Rectangle {
        color: root.hovered ? Theme.pill : "transparent"
        radius: root.cornerRadius
    }
}
