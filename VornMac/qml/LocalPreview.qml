import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The end of the chat as it was found; while it is looked for, the shape of one.
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
    PlaceholderThread {
        anchors.fill: parent
        visible: root.isLooking
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
