import QtQuick
import Vorn.Drawing

/// Turns during a wait. It stands still if the user wants no motion, and while it is not visible.
SpinnerBlades {
    id: root

    property real size: 16
    readonly property bool isSpinning: motion.isOn
    readonly property Motion motion: Motion {
        item: root
    }

    color: Theme.secondary
    implicitHeight: size
    implicitWidth: size
    Accessible.ignored: true

    // One blade at a time, as fast as the eye needs it: a smooth turn would redraw the window sixty times a second.
    Timer {
        interval: 100
        repeat: true
        running: root.isSpinning
        onTriggered: root.turn()
    }
}
