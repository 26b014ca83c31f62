import QtQuick

/// The one filled button of a screen, for the next thing to do.
PushButton {
    id: root

    /// Outlined instead of filled, for when nothing needs to be done.
    property bool isQuiet: false

    contentItem: ButtonText {
        color: !root.enabled ? Theme.disabledText : root.isQuiet ? Theme.ink : Theme.primaryText
        font: root.font
        text: root.label
    }
    background: Rectangle {
        border.color: Theme.border
        border.width: root.isQuiet ? 1 : 0
        color: root.isQuiet ? (root.hovered && root.enabled ? Theme.pill : "transparent") : root.enabled ? Theme.primaryFill : Theme.disabledFill
        opacity: root.hovered && root.enabled && !root.isQuiet ? 0.9 : 1
        radius: root.cornerRadius
    }
}
