import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The last messages of the chat that was found; a placeholder while it is looked for; a symbol if there is none.
PreviewPanel {
    id: root

    required property PreviewList messages
    required property bool isLooking
    required property bool showsMessages

    ChatCard {
        anchors.fill: parent
        turns: root.messages
        visible: root.showsMessages
    }
    Rectangle {
        anchors.fill: parent
        border.color: Theme.border
        border.width: 1
        color: Theme.card
        radius: Theme.cardRadius
        visible: root.isLooking

        PlaceholderThread {
            anchors.fill: parent
            anchors.margins: 14
        }
    }
    Symbol {
        anchors.centerIn: parent
        color: Theme.tertiary
        height: 56
        name: "bubble.slash"
        visible: !root.isLooking && !root.showsMessages
        width: 56
        Accessible.ignored: true
    }
}
