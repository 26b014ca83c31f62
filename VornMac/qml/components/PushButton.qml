import QtQuick
import QtQuick.Templates as T

/// The base of every button: its keys, its focus, and its role for screen readers. A disabled button takes no focus and
/// does nothing, however it is pressed.
T.AbstractButton {
    id: root

    /// The button's text. Not Qt's `text`, in which an ampersand marks a mnemonic.
    property string label: ""
    property real cornerRadius: Theme.controlRadius

    // Whole points: otherwise the edges of buttons in a column differ by a pixel.
    implicitWidth: Math.ceil(implicitContentWidth) + leftPadding + rightPadding
    implicitHeight: Math.max(implicitContentHeight + topPadding + bottomPadding, Theme.controlHeight)
    padding: 0
    leftPadding: 20
    rightPadding: 20
    font: Theme.fonts.button
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    hoverEnabled: true
    opacity: enabled && down ? 0.75 : 1

    Keys.onReturnPressed: root.press()
    Keys.onEnterPressed: root.press()

    Accessible.role: Accessible.Button // Qt 6.4 ignores any other role set on a button
    Accessible.name: label
    Accessible.focusable: enabled
    Accessible.onPressAction: root.press()

    function press() {
        if (enabled)
            clicked();
    }

    FocusRing {
        shown: root.visualFocus
        cornerRadius: root.cornerRadius
    }
}
