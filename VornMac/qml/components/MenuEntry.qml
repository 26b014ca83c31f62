import QtQuick

/// One entry of a menu.
PushButton {
    id: root

    cornerRadius: 8
    leftPadding: 10
    rightPadding: 10
    Accessible.role: Accessible.MenuItem

    contentItem: ButtonText {
        color: Theme.ink
        font: root.font
        horizontalAlignment: Text.AlignLeft
        text: root.label
    }
    background: Rectangle {
        color: root.hovered || root.visualFocus ? Theme.pill : "transparent"
        radius: root.cornerRadius
    }
}
