import QtQuick

/// A placeholder for a chat that is being looked for. A slow highlight passes over it while it is visible, unless the
/// user has reduced motion.
Item {
    id: root

    readonly property bool shimmers: motion.isOn
    property real light: 0 // its position, 0…1, repeating

    function brightness(bubble: int): real {
        if (!shimmers)
            return 0.55;
        const behind = light - bubble * 0.11;
        return 0.4 + 0.4 * Math.max(0, Math.cos(2 * Math.PI * behind));
    }

    Accessible.ignored: true

    Motion {
        id: motion
        item: root
    }
    // In steps: a slow highlight looks the same, and redraws the window twelve times a second instead of sixty.
    Timer {
        id: steps
        interval: 80
        repeat: true
        running: root.shimmers
        onTriggered: root.light = (root.light + steps.interval / 2400) % 1
    }
    Column {
        anchors.bottom: parent.bottom
        spacing: 10
        width: parent.width

        PlaceholderBubble {
            brightness: root.brightness(0)
            first: 0.35
            fromMe: true
            width: root.width
        }
        PlaceholderBubble {
            brightness: root.brightness(1)
            first: 0.7
            fromMe: false
            second: 0.52
            width: root.width
        }
        PlaceholderBubble {
            brightness: root.brightness(2)
            first: 0.62
            fromMe: true
            second: 0.4
            width: root.width
        }
        PlaceholderBubble {
            brightness: root.brightness(3)
            first: 0.7
            fromMe: false
            second: 0.62
            third: 0.35
            width: root.width
        }
        PlaceholderBubble {
            brightness: root.brightness(4)
            first: 0.52
            fromMe: true
            width: root.width
        }
    }
}
