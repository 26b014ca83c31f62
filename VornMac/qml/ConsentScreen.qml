import QtQuick
import Vorn.Components

/// Says exactly what leaves this Mac, and asks for two confirmations.
StepScreen {
    id: root

    formGap: Theme.section
    primaryEnabled: model.understandsUpload && model.agreesToShare
    onPrimary: model.acceptConsent()

    Section {
        title: root.model.consent.reads.heading
        width: parent.width

        Bullet {
            symbol: "bubble.left.and.bubble.right"
            text: root.model.consent.reads.points[0]
            width: parent.width
        }
        Bullet {
            symbol: "link"
            text: root.model.consent.reads.points[1]
            width: parent.width
        }
    }
    Section {
        title: root.model.consent.neverReads.heading
        width: parent.width

        Bullet {
            symbol: "person.2.slash"
            symbolColor: Theme.success
            text: root.model.consent.neverReads.points[0]
            width: parent.width
        }
    }
    Section {
        title: root.model.consent.next.heading
        width: parent.width

        Words {
            color: Theme.secondary
            text: root.model.consent.next.points[0]
            width: parent.width
        }
    }
    ChoiceCard {
        width: parent.width

        ChoiceChip {
            isOn: root.model.understandsUpload
            title: root.model.consent.understandsUpload
            width: parent.width
            onChosen: isOn => root.model.understandsUpload = isOn
        }
        ChoiceChip {
            isOn: root.model.agreesToShare
            title: root.model.consent.agreesToShare
            width: parent.width
            onChosen: isOn => root.model.agreesToShare = isOn
        }
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: root.model.text.caption

        MockThread {
            anchors.fill: parent
        }
    }
}
