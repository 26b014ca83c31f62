import QtQuick

/// Whether a continuous animation may run: `item` is visible, and the user wants motion.
QtObject {
    id: root

    required property Item item

    readonly property int visibility: item.Window.visibility
    readonly property bool isWindowSeen: visibility !== Window.Hidden && visibility !== Window.Minimized
    readonly property bool isOn: item.visible && isWindowSeen && Theme.motion(1) > 0
}
