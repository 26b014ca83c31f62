import QtQuick
import Vorn.Components
import Vorn.Drawing

/// A made-up conversation, to show what kind of thing is uploaded.
Item {
    id: root

    property ListModel turns: ListModel {
        ListElement {
            fromMe: true
            text: "Find me a dinner spot for Friday"
        }
        ListElement {
            fromMe: false
            text: "Lupa has a table for two at 7:30. Want me to book it?"
        }
        ListElement {
            fromMe: false
            text: "Booked. I added it to your calendar and texted you the address."
        }
        ListElement {
            fromMe: true
            text: "Can you also remind me to buy flowers"
        }
        ListElement {
            fromMe: false
            text: "Done. I'll remind you Friday at 5 pm."
        }
    }

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
                text: "N"
                verticalAlignment: Text.AlignVCenter
                width: 44
            }
        }
        Words {
            font: Theme.fonts.bodyMedium
            horizontalAlignment: Text.AlignHCenter
            text: "Nimbrel"
            width: parent.width
        }
        Words {
            color: Theme.secondary
            font: Theme.fonts.caption
            horizontalAlignment: Text.AlignHCenter
            text: "iMessage"
            width: parent.width
        }
    }
    MessageThread {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: head.bottom
        anchors.topMargin: Theme.section
        startsAtTop: true
        turns: root.turns
    }
}
