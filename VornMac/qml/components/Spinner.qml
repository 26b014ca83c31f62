import QtQuick
import Vorn.Drawing

/// Turns during a wait. Stands still while it is invisible, or if the user has reduced motion.
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

    // Turns one blade at a time, ten times a second: a smooth turn would redraw the window sixty times a second.
    Timer {
        interval: 100
        repeat: true
        running: root.isSpinning
        onTriggered: root.turn()
    }
}
