import QtQuick
import Vorn.Components
import Vorn.View

/// Shows how far the upload has come.
StepScreen {
    id: root

    readonly property bool hasFailed: model.uploadPhase === ScreenModel.UploadPhase.Failed

    step: 4

    function statusText(): string {
        switch (model.uploadPhase) {
        case ScreenModel.UploadPhase.Uploading:
            return "Uploading securely. Keep this window open.";
        case ScreenModel.UploadPhase.Finishing:
            return "Finishing up…";
        case ScreenModel.UploadPhase.Failed:
            return model.uploadFailure;
        default:
            return "Packing your chat…";
        }
    }

    function statusTone(): int {
        switch (model.uploadPhase) {
        case ScreenModel.UploadPhase.Uploading:
            return StatusLine.Good;
        case ScreenModel.UploadPhase.Failed:
            return StatusLine.Bad;
        default:
            return StatusLine.Waiting;
        }
    }

    TwoToneTitle {
        primary: "Uploading"
        secondary: "Your Nimbrel chat"
        width: parent.width
    }
    Item {
        height: 4
        width: 1
    }
    GradientProgressBar {
        label: "vorn-nimbrel-export.zip"
        value: root.model.uploadFraction
        width: parent.width
    }
    StatusLine {
        text: root.statusText()
        tone: root.statusTone()
        width: parent.width
    }
    ActionRow {
        primaryTitle: "Try again"
        visible: root.hasFailed
        onPrimary: root.model.go(ScreenModel.Step.Find)
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: "Reward"
        isHeading: true

        RewardCard {
            amount: root.model.reward
            anchors.centerIn: parent
            status: ""
            width: parent.width
        }
    }
}
