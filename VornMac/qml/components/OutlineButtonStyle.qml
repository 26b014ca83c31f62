import QtQuick

/// A button beside the primary one.
PushButton {
    id: root

    contentItem: ButtonText {
        color: root.enabled ? Theme.ink : Theme.disabledText
        font: root.font
        text: root.label
    }
    background: Rectangle {
        border.color: Theme.border
        border.width: 1
        color: root.hovered && root.enabled ? Theme.pill : "transparent"
        radius: root.cornerRadius
    }
}
