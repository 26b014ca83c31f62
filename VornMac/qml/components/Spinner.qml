import QtQuick

/// Turns while something is waited for. Where the user wants no motion, and where it is not seen, it stands still.
Item {
    id: root

    property real size: 16
    readonly property bool isSpinning: visible && Theme.motion(1) > 0
    readonly property int bladeCount: 8

    implicitHeight: size
    implicitWidth: size
    Accessible.ignored: true

    Item {
        id: wheel
        anchors.fill: parent

        Repeater {
            model: root.bladeCount

            Rectangle {
                id: blade
                required property int index

                color: Theme.secondary
                height: root.size * 0.3
                opacity: 0.15 + 0.85 * (index + 1) / root.bladeCount
                radius: width / 2
                width: Math.max(1.5, root.size * 0.11)
                x: (wheel.width - width) / 2
                transform: Rotation {
                    angle: blade.index * 360 / root.bladeCount
                    origin.x: blade.width / 2
                    origin.y: wheel.height / 2
                }
            }
        }
    }

    // A step a blade, as fast as the eye needs it: a smooth turn would redraw the window sixty times a second.
    Timer {
        interval: 100
        repeat: true
        running: root.isSpinning
        onTriggered: wheel.rotation = (wheel.rotation + 360 / root.bladeCount) % 360
    }
}
