import QtQuick

/// A conversation, newest at the bottom. `turns` is a model with the roles `text`, `spoken` and `fromMe`. A long one
/// scrolls, starting at the newest message, and fades at each edge beyond which it continues.
Flickable {
    id: root

    required property string name // for a screen reader
    property alias turns: bubbles.model
    property bool redacted: false
    /// The colour of the surface below, into which the thread fades.
    property color surface: Theme.card

    boundsBehavior: Flickable.StopAtBounds
    clip: interactive
    contentHeight: Math.max(height, column.implicitHeight)
    contentY: contentHeight - height
    interactive: contentHeight > height
    activeFocusOnTab: interactive
    Accessible.role: Accessible.List
    Accessible.focusable: interactive
    Accessible.name: root.name
    Accessible.ignored: redacted

    // Reparented to the view: children of the content would scroll with it.
    EdgeFade {
        height: 32
        opacity: Math.max(0, Math.min(1, root.contentY / height))
        parent: root
        surface: root.surface
        width: root.width
    }
    EdgeFade {
        anchors.bottom: parent.bottom
        isAtBottom: true
        opacity: Math.max(0, Math.min(1, (root.contentHeight - root.height - root.contentY) / height))
        parent: root
        surface: root.surface
        width: root.width
    }

    Keys.onUpPressed: root.contentY = Math.max(0, root.contentY - 40)
    Keys.onDownPressed: root.contentY = Math.min(root.contentHeight - root.height, root.contentY + 40)

    Column {
        id: column
        width: root.width
        y: root.contentHeight - implicitHeight

        Repeater {
            id: bubbles

            delegate: MessageBubble {
                // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
                // qmllint disable unqualified
                redacted: root.redacted
                width: column.width
                // qmllint enable unqualified
            }
            // Only the last of several consecutive messages from one side has a tail.
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
