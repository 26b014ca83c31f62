import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// A made-up conversation, to show what kind of thing is uploaded.
Item {
    Column {
        id: head
        spacing: 2
        width: parent.width

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            height: 48
            width: 44

            AccentBar {
                endColor: Theme.accentEnd
                height: 44
                startColor: Theme.accentStart
                width: 44
            }
            Text {
                Accessible.ignored: true
                color: Theme.outgoingInk
                font.family: Theme.fonts.title.family
                font.pixelSize: 20
                font.weight: Font.DemiBold
                height: 44
                horizontalAlignment: Text.AlignHCenter
                text: Labels.assistantInitial
                verticalAlignment: Text.AlignVCenter
                width: 44
            }
        }
        Words {
            font: Theme.fonts.bodyMedium
            horizontalAlignment: Text.AlignHCenter
            text: Labels.assistantName
            width: parent.width
        }
        Words {
            color: Theme.secondary
            font: Theme.fonts.caption
            horizontalAlignment: Text.AlignHCenter
            text: Labels.messagesService
            width: parent.width
        }
    }
    MessageThread {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: head.bottom
        anchors.topMargin: Theme.section
        name: Labels.conversation
        startsAtTop: true
        turns: Labels.exampleConversation
    }
}
