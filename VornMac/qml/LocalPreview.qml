import QtQuick
import Vorn.Components
import Vorn.View

/// The end of the chat as it was found. Before that, the shape of one.
PreviewPanel {
    id: root

    required property PreviewList messages
    required property bool showsMessages

    MessageThread {
        anchors.fill: parent
        name: Labels.conversation
        turns: root.messages
        visible: root.showsMessages
    }
    MessageThread {
        anchors.fill: parent
        name: Labels.conversation
        redacted: true
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
