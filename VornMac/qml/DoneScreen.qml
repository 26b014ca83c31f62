import QtQuick
import Vorn.Components
import Vorn.View

/// Shows what the review says, and what the user earned.
StepScreen {
    id: root

    readonly property int outcome: model.outcome
    readonly property bool isApproved: outcome === ScreenModel.Outcome.Approved
    readonly property bool isRejected: outcome === ScreenModel.Outcome.Rejected
    readonly property bool isExpired: outcome === ScreenModel.Outcome.Expired

    step: 5

    function titleText(): string {
        switch (outcome) {
        case ScreenModel.Outcome.Approved:
            return "You earned " + model.earned;
        case ScreenModel.Outcome.Rejected:
            return "Not accepted";
        case ScreenModel.Outcome.Expired:
            return "Upload stopped";
        default:
            return "Upload received";
        }
    }

    function subtitleText(): string {
        switch (outcome) {
        case ScreenModel.Outcome.Approved:
            return "Thanks for your Nimbrel chat";
        case ScreenModel.Outcome.Rejected:
            return "This time";
        case ScreenModel.Outcome.Expired:
            return "Nothing was sent";
        case ScreenModel.Outcome.ReviewPending:
            return "A person is checking it";
        default:
            return "Checking your chat";
        }
    }

    function statusName(): string {
        return isApproved ? "approved" : isRejected ? "rejected" : isExpired ? "expired" : "";
    }

    TwoToneTitle {
        primary: root.titleText()
        secondary: root.subtitleText()
        width: parent.width
    }
    Words {
        text: "The reward is in your Vorn balance."
        visible: root.isApproved
        width: parent.width
    }
    Words {
        text: "Upload again on " + root.model.nextUpload + " with your newer chats."
        visible: root.isApproved && root.model.nextUpload.length > 0
        width: parent.width
    }
    StatusLine {
        text: root.isRejected ? root.model.rejection : root.isExpired ? "The upload didn't finish. Try again from your chat." : ""
        tone: StatusLine.Warning
        visible: text.length > 0
        width: parent.width
    }
    Column {
        spacing: 12
        visible: !root.isApproved && !root.isRejected && !root.isExpired
        width: parent.width

        Words {
            text: "This usually takes a minute or two."
            width: parent.width
        }
        Words {
            color: Theme.secondary
            text: "You can close this window. The result also shows on the quest in the Vorn app."
            width: parent.width
        }
    }
    ActionRow {
        primaryTitle: "Back to your chat"
        onPrimary: root.model.go(ScreenModel.Step.Find)
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: "Reward"
        isHeading: true

        RewardCard {
            amount: root.model.earned
            anchors.centerIn: parent
            status: root.statusName()
            width: parent.width
        }
    }
}
