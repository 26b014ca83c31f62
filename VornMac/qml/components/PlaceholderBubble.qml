import QtQuick
import Vorn.Drawing

/// The shape of a message: bars in place of words.
Item {
    id: root

    required property bool fromMe
    required property real brightness // of the bars, 0…1
    // The widths of the bars, from the top, as fractions of `widest`; a bar of width 0 is hidden.
    required property real first
    property real second: 0
    property real third: 0

    readonly property real widest: width * 0.8
    readonly property color ink: fromMe ? Theme.outgoingInk : Theme.tertiary

    implicitHeight: bubble.height
    Accessible.ignored: true

    BubbleShape {
        id: bubble
        anchors.right: root.fromMe ? parent.right : undefined
        color: root.fromMe ? Theme.outgoingBubble : Theme.incomingBubble
        height: bars.height + 24
        opacity: root.fromMe ? 0.55 : 1
        tail: root.fromMe ? BubbleShape.RightTail : BubbleShape.LeftTail
        width: Math.ceil(bars.width) + 36
    }
    Column {
        id: bars
        anchors.centerIn: bubble
        opacity: root.brightness
        spacing: 8

        Rectangle {
            color: root.ink
            height: 8
            radius: 4
            width: root.widest * root.first
        }
        Rectangle {
            color: root.ink
            height: 8
            radius: 4
            visible: root.second > 0
            width: root.widest * root.second
        }
        Rectangle {
            color: root.ink
            height: 8
            radius: 4
            visible: root.third > 0
            width: root.widest * root.third
        }
    }
}
