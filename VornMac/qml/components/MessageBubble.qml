import QtQuick
import Vorn.Drawing

/// One message as its bubble, on the side of who wrote it. A redacted one shows bars where words would be.
Item {
    id: root

    required property string text
    required property string spoken // the text and who wrote it, for a screen reader
    required property bool fromMe
    property bool redacted: false
    property bool hasTail: true
    property real gapBelow: 0

    readonly property real widest: width * 0.8
    readonly property color fill: fromMe ? Theme.outgoingBubble : Theme.incomingBubble

    implicitHeight: bubble.height + gapBelow
    Accessible.role: Accessible.ListItem
    Accessible.name: redacted ? "" : spoken
    Accessible.ignored: redacted

    BubbleShape {
        id: bubble
        anchors.right: root.fromMe ? parent.right : undefined
        color: root.fill
        height: Math.ceil(root.redacted ? bars.height + 24 : words.height + 16)
        opacity: root.redacted ? 0.55 : 1
        tail: !root.hasTail ? BubbleShape.NoTail : root.fromMe ? BubbleShape.RightTail : BubbleShape.LeftTail
        width: Math.ceil(root.redacted ? bars.width : words.width) + 36

        Words {
            id: words
            Accessible.ignored: true
            anchors.centerIn: parent
            color: root.fromMe ? Theme.outgoingInk : Theme.ink
            text: root.text
            visible: !root.redacted
            width: Math.min(root.widest - 36, Math.ceil(measure.advanceWidth) + 1)
            wrapMode: Text.Wrap
        }
        TextMetrics {
            id: measure
            font: words.font
            text: root.longestLine()
        }
        Column {
            id: bars
            anchors.centerIn: parent
            spacing: 8
            visible: root.redacted

            Rectangle {
                color: root.fromMe ? Theme.outgoingInk : Theme.tertiary
                height: 8
                opacity: 0.6
                radius: 4
                width: root.widest * 0.62
            }
            Rectangle {
                color: root.fromMe ? Theme.outgoingInk : Theme.tertiary
                height: 8
                opacity: 0.6
                radius: 4
                width: root.widest * 0.4
            }
        }
    }

    function longestLine(): string {
        return text.split("\n").reduce((longest, line) => line.length > longest.length ? line : longest, "");
    }
}
