import QtQuick
import Vorn.Drawing

/// One message in its bubble, on its sender's side, as wide as its longest line. A redacted one shows bars in place of
/// words.
Item {
    id: root

    required property string text
    required property string spoken // the text and its sender, for a screen reader
    required property bool fromMe
    property bool redacted: false
    property bool hasTail: true
    property real gapBelow: 0

    readonly property real widest: width * 0.8
    readonly property int padding: 12
    readonly property real side: padding + bubble.tailRoom // between the text and the shape's edge
    readonly property color fill: fromMe ? Theme.outgoingBubble : Theme.incomingBubble

    implicitHeight: bubble.height + gapBelow
    Accessible.role: Accessible.ListItem
    Accessible.name: redacted ? "" : spoken
    Accessible.ignored: redacted

    BubbleShape {
        id: bubble
        anchors.right: root.fromMe ? parent.right : undefined
        color: root.fill
        height: Math.ceil(root.redacted ? bars.height + 2 * root.padding : words.lastBaseline + root.padding)
        opacity: root.redacted ? 0.55 : 1
        tail: !root.hasTail ? BubbleShape.NoTail : root.fromMe ? BubbleShape.RightTail : BubbleShape.LeftTail
        width: Math.max(height + 2 * tailRoom, Math.ceil(root.redacted ? bars.width : words.contentWidth) + 2 * root.side)

        // As wide as a line may be: the actual width is known only after the layout.
        Words {
            id: words

            readonly property real lastBaseline: y + contentHeight - belowBaseline

            Accessible.ignored: true
            color: root.fromMe ? Theme.outgoingInk : Theme.ink
            text: root.text
            visible: !root.redacted
            width: root.widest - 2 * root.side
            wrapMode: Text.Wrap
            x: (bubble.width - contentWidth) / 2 - (effectiveHorizontalAlignment === Text.AlignRight ? width - contentWidth : 0)
            // The space above a capital equals the space below the last baseline.
            y: root.padding - (baselineOffset - capitalHeight)
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
}
