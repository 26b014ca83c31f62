import QtQuick
import Vorn.Components
import Vorn.View

/// A conversation with the assistant on a card under the assistant's name, as Messages shows one.
Rectangle {
    id: root

    property alias turns: thread.turns

    border.color: Theme.border
    border.width: 1
    color: Theme.card
    radius: Theme.cardRadius

    Column {
        id: head
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.topMargin: 14
        bottomPadding: 10

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            color: Theme.incomingBubble
            height: 36
            radius: height / 2
            width: 36

            Text {
                Accessible.ignored: true
                anchors.centerIn: parent
                color: Theme.ink
                font.family: Theme.fonts.title.family
                font.pixelSize: 16
                font.weight: Font.DemiBold
                text: Labels.assistantInitial
                textFormat: Text.PlainText
            }
        }
        Words {
            font: Theme.fonts.bodyMedium
            horizontalAlignment: Text.AlignHCenter
            text: Labels.assistantName
            topPadding: 5
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
    Rectangle {
        anchors.top: head.bottom
        color: Theme.divider
        height: 1
        width: parent.width
    }
    MessageThread {
        id: thread
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.top: head.bottom
        anchors.topMargin: 1
        name: Labels.conversation
    }
    // Around the card: inside, the thread would clip it.
    FocusRing {
        cornerRadius: root.radius
        shown: thread.activeFocus
    }
}
