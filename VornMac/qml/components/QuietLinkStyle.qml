import QtQuick

/// A text-only button, underlined while the pointer or the focus is on it.
PushButton {
    id: root

    cornerRadius: 6
    implicitHeight: implicitContentHeight + 8
    leftPadding: 0
    rightPadding: 0

    contentItem: ButtonText {
        color: root.enabled ? Theme.ink : Theme.disabledText
        font.family: root.font.family
        font.pixelSize: root.font.pixelSize
        font.underline: root.enabled && (root.hovered || root.visualFocus)
        font.weight: root.font.weight
        horizontalAlignment: Text.AlignLeft
        text: root.label
    }
}
