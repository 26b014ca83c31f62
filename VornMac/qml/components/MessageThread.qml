import QtQuick

/// A conversation, newest at the bottom. `turns` is a model with the roles `text`, `spoken` and `fromMe`. What does not fit
/// scrolls, from the newest on.
Flickable {
    id: root

    required property string name // for a screen reader
    property alias turns: bubbles.model
    property bool redacted: false
    /// Whether a short conversation stands at the top rather than at the bottom.
    property bool startsAtTop: false

    boundsBehavior: Flickable.StopAtBounds
    clip: contentHeight > height
    contentHeight: Math.max(height, column.implicitHeight)
    contentY: contentHeight - height
    interactive: contentHeight > height
    activeFocusOnTab: interactive
    Accessible.role: Accessible.List
    Accessible.name: root.name
    Accessible.ignored: redacted

    FocusRing {
        anchors.margins: 0
        parent: root // what is declared here would scroll along
        shown: root.activeFocus
    }

    Keys.onUpPressed: root.contentY = Math.max(0, root.contentY - 40)
    Keys.onDownPressed: root.contentY = Math.min(root.contentHeight - root.height, root.contentY + 40)

    Column {
        id: column
        width: root.width
        y: root.startsAtTop ? 0 : root.contentHeight - implicitHeight

        Repeater {
            id: bubbles

            delegate: MessageBubble {
                // Qt 6.4 cannot bind a delegate to the ids around it.
                // qmllint disable unqualified
                redacted: root.redacted
                width: column.width
                // qmllint enable unqualified
            }
            // Only the last of several in a row from one side has a tail.
            onItemAdded: (index, item) => {
                const before = itemAt(index - 1) as MessageBubble;
                if (!before)
                    return;
                before.hasTail = before.fromMe !== (item as MessageBubble).fromMe;
                before.gapBelow = before.hasTail ? 10 : 3;
            }
        }
    }
}
