import QtQuick
import Vorn.Components

/// Says exactly what leaves this Mac, and asks for two confirmations.
StepScreen {
    id: root

    step: 1

    TwoToneTitle {
        primary: "Your Nimbrel chat"
        secondary: "Exactly what we upload"
        width: parent.width
    }
    Section {
        title: "What Vorn reads"
        width: parent.width

        Bullet {
            symbol: "bubble.left.and.bubble.right"
            text: "Your one-to-one conversation with Nimbrel: the text of each message, when it was sent, and who sent it."
            width: parent.width
        }
        Bullet {
            symbol: "link"
            text: "Links in those messages, and the type of any attachment (\"a photo\"), never the file itself."
            width: parent.width
        }
    }
    Section {
        title: "What Vorn never reads"
        width: parent.width

        Bullet {
            symbol: "person.2.slash"
            text: "Any other conversation, group chats (even ones Nimbrel is in), contacts, photos or files."
            width: parent.width
        }
    }
    Section {
        title: "What happens next"
        width: parent.width

        Words {
            text: "Your chat is pseudonymized and added to a dataset that trains AI assistants. You earn " + root.model.reward + " when it's accepted."
            width: parent.width
        }
    }
    Column {
        spacing: Theme.gap
        width: parent.width

        ChoiceChip {
            isOn: root.model.understandsUpload
            title: "I understand what's uploaded"
            width: parent.width
            onChosen: isOn => root.model.understandsUpload = isOn
        }
        ChoiceChip {
            isOn: root.model.agreesToShare
            title: "I agree to share my Nimbrel chat"
            width: parent.width
            onChosen: isOn => root.model.agreesToShare = isOn
        }
    }
    ActionRow {
        primaryEnabled: root.model.understandsUpload && root.model.agreesToShare
        primaryTitle: "Continue"
        onPrimary: root.model.acceptConsent()
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: "Example. Your own chat never shows here."

        MockThread {
            anchors.fill: parent
        }
    }
}
