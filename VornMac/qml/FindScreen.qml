import QtQuick
import Vorn.Components
import Vorn.View

/// Shows what is on this Mac, before anything leaves it, and offers the upload.
StepScreen {
    id: root

    readonly property int phase: model.scanPhase
    readonly property bool isFound: phase === ScreenModel.ScanPhase.Found
    readonly property bool isLooking: phase === ScreenModel.ScanPhase.Idle || phase === ScreenModel.ScanPhase.Loading
    readonly property bool isNotFound: phase === ScreenModel.ScanPhase.NotFound

    step: 3

    function titleText(): string {
        switch (phase) {
        case ScreenModel.ScanPhase.Unavailable:
        case ScreenModel.ScanPhase.NotConfigured:
            return "Not available yet";
        case ScreenModel.ScanPhase.NotFound:
            return "Not found on this Mac";
        case ScreenModel.ScanPhase.Found:
            return "Found on this Mac";
        case ScreenModel.ScanPhase.Failed:
            return "Something went wrong";
        default:
            return "Looking in Messages…";
        }
    }

    /// What the status line says; nothing in the phases without one.
    function statusText(): string {
        switch (phase) {
        case ScreenModel.ScanPhase.Unavailable:
            return "Nimbrel export isn't available yet. Check back soon.";
        case ScreenModel.ScanPhase.NotConfigured:
            return "Nimbrel export isn't set up yet. Try again later.";
        case ScreenModel.ScanPhase.Failed:
            return model.scanFailure;
        case ScreenModel.ScanPhase.NotFound:
        case ScreenModel.ScanPhase.Found:
            return "";
        default:
            return "Reading a private copy of your Messages history…";
        }
    }

    function statusTone(): int {
        if (isLooking)
            return StatusLine.Waiting;
        return phase === ScreenModel.ScanPhase.Failed ? StatusLine.Bad : StatusLine.Warning;
    }

    function noteTone(): int {
        switch (model.availability) {
        case ScreenModel.Availability.Cooldown:
            return StatusLine.Good;
        case ScreenModel.Availability.LastRejected:
            return StatusLine.Warning;
        default:
            return StatusLine.Waiting;
        }
    }

    TwoToneTitle {
        primary: root.titleText()
        secondary: "Your Nimbrel chat"
        width: parent.width
    }
    StatusLine {
        text: root.statusText()
        tone: root.statusTone()
        visible: text.length > 0
        width: parent.width
    }
    Column {
        spacing: 12
        visible: root.isNotFound
        width: parent.width

        Words {
            text: "No conversation with Nimbrel on this Mac."
            width: parent.width
        }
        Words {
            color: Theme.secondary
            text: "Make sure Messages on this Mac is signed in with the Apple ID you text Nimbrel from, and that Messages in iCloud is on so your history syncs here."
            width: parent.width
        }
    }
    StatisticsCard {
        dates: root.model.dates
        messageCount: root.model.messageCount
        promptCount: root.model.promptCount
        replyCount: root.model.replyCount
        visible: root.isFound
        width: parent.width
    }
    StatusLine {
        text: root.isFound ? root.model.availabilityNote : ""
        tone: root.noteTone()
        visible: text.length > 0
        width: parent.width
    }
    OutlineButtonStyle {
        label: "Look again"
        visible: !root.isFound && !root.isLooking
        onClicked: root.model.go(ScreenModel.Step.Find)
    }
    ActionRow {
        backTitle: "Back"
        primaryEnabled: root.model.canUpload
        primaryTitle: "Upload chat"
        onBack: root.model.go(ScreenModel.Step.Consent)
        onPrimary: root.model.upload()
    }

    preview: LocalPreview {
        anchors.fill: parent
        messages: root.model.preview
        showsMessages: root.isFound
    }
}
