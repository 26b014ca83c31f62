import QtQuick
import Vorn.Components
import Vorn.View

/// The end of the chat as it was found. Before that, the shape of one.
PreviewPanel {
    id: root

    required property PreviewList messages
    required property bool showsMessages

    caption: "Only on this Mac. Nothing is uploaded yet."

    MessageThread {
        anchors.fill: parent
        turns: root.messages
        visible: root.showsMessages
    }
    MessageThread {
        anchors.fill: parent
        redacted: true
        turns: ListModel {
            ListElement {
                fromMe: true
                text: ""
            }
            ListElement {
                fromMe: false
                text: ""
            }
            ListElement {
                fromMe: true
                text: ""
            }
            ListElement {
                fromMe: false
                text: ""
            }
        }
        visible: !root.showsMessages
    }
}
