import QtQuick

/// The one button of a screen that leads on.
PushButton {
    id: root

    contentItem: ButtonText {
        color: root.enabled ? Theme.primaryText : Theme.disabledText
        font: root.font
        text: root.label
    }
    background: Rectangle {
        color: root.enabled ? Theme.primaryFill : Theme.disabledFill
        radius: root.cornerRadius
    }
}
