import QtQuick
import Vorn.Components
import Vorn.View

/// Links this Mac to the account on the user's phone, by a code that the phone scans.
StepScreen {
    id: root

    readonly property bool hasFailed: model.linkPhase === ScreenModel.LinkPhase.Failed

    step: 0

    function statusText(): string {
        switch (model.linkPhase) {
        case ScreenModel.LinkPhase.Loading:
            return "Getting a code…";
        case ScreenModel.LinkPhase.Showing:
            return "Waiting for your phone";
        case ScreenModel.LinkPhase.Scanned:
            return "Scanned. Confirm Link this Mac on your phone.";
        case ScreenModel.LinkPhase.Rejected:
            return "Your phone declined the link. Here's a new code.";
        default:
            return model.linkFailure;
        }
    }

    function statusTone(): int {
        switch (model.linkPhase) {
        case ScreenModel.LinkPhase.Scanned:
            return StatusLine.Good;
        case ScreenModel.LinkPhase.Rejected:
            return StatusLine.Warning;
        case ScreenModel.LinkPhase.Failed:
            return StatusLine.Bad;
        default:
            return StatusLine.Waiting;
        }
    }

    TwoToneTitle {
        primary: "Link your phone"
        secondary: "Your phone links this Mac"
        width: parent.width
    }
    FieldLabel {
        text: "Scan with the Vorn app"
        topPadding: 4
        width: parent.width
    }
    NumberedStep {
        done: root.model.linkPhase === ScreenModel.LinkPhase.Scanned
        number: 1
        text: "Open Vorn on your iPhone."
        width: parent.width
    }
    NumberedStep {
        done: root.model.linkPhase === ScreenModel.LinkPhase.Scanned
        number: 2
        text: "Open the Nimbrel chat quest and tap Link a Mac."
        width: parent.width
    }
    NumberedStep {
        number: 3
        text: "Point your camera at the code, then confirm on your phone."
        width: parent.width
    }
    Item {
        height: 4
        width: 1
    }
    StatusLine {
        text: root.statusText()
        tone: root.statusTone()
        width: parent.width
    }
    OutlineButtonStyle {
        label: "Try again"
        visible: root.hasFailed
        onClicked: root.model.startLinking()
    }
    Words {
        color: Theme.secondary
        font: Theme.fonts.caption
        text: "Vorn for Mac only uploads your Nimbrel chat. Linking gives this Mac no access to anything else in your account."
        topPadding: 4
        width: parent.width
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: ""

        QRCard {
            anchors.centerIn: parent
            expires: root.model.linkExpires
            payload: root.model.qrPayload
            phase: root.model.linkPhase
            secondsLeft: root.model.linkSecondsLeft
        }
    }
}
