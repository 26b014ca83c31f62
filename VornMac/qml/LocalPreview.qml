import QtQuick
import Vorn.Components
import Vorn.View

/// The end of the chat as it was found. Before that, the shape of one.
PreviewPanel {
    id: root

    required property PreviewList messages
    required property bool showsMessages

    ChatCard {
        anchors.fill: parent
        turns: root.messages
        visible: root.showsMessages
    }
    MessageThread {
        anchors.fill: parent
        name: Labels.conversation
        redacted: true
        surface: Theme.panel
        turns: ListModel {
            ListElement {
                fromMe: true
                spoken: ""
                text: ""
            }
            ListElement {
                fromMe: false
                spoken: ""
                text: ""
            }
            ListElement {
                fromMe: true
                spoken: ""
                text: ""
            }
            ListElement {
                fromMe: false
                spoken: ""
                text: ""
            }
        }
        visible: !root.showsMessages
    }
}
