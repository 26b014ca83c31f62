import QtQuick

/// Whether a continuous animation may run: `item` and its window are visible, and the user has not reduced motion.
QtObject {
    id: root

    required property Item item

    readonly property int visibility: item.Window.visibility
    readonly property bool isWindowSeen: visibility !== Window.Hidden && visibility !== Window.Minimized
    readonly property bool isOn: item.visible && isWindowSeen && Theme.motion(1) > 0
}
