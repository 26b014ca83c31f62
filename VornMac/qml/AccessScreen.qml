import QtQuick
import Vorn.Components
import Vorn.View

/// Guides the user to Full Disk Access, and goes on by itself once it is granted.
StepScreen {
    id: root

    readonly property bool isGranted: model.access === ScreenModel.Access.Granted
    readonly property bool isDenied: model.access === ScreenModel.Access.Denied

    step: 2

    function statusText(): string {
        switch (model.access) {
        case ScreenModel.Access.Granted:
            return "Access granted.";
        case ScreenModel.Access.NoDatabase:
            return "Messages isn't set up on this Mac. Sign in to Messages with the Apple ID you text Nimbrel from, then come back.";
        default:
            return "Waiting for access…";
        }
    }

    function statusTone(): int {
        switch (model.access) {
        case ScreenModel.Access.Granted:
            return StatusLine.Good;
        case ScreenModel.Access.NoDatabase:
            return StatusLine.Warning;
        default:
            return StatusLine.Waiting;
        }
    }

    // Only a change while the screen shows leads on: a database that opens can still fail to be read, and the way back to
    // here must not bounce.
    Connections {
        target: root.model
        function onAccessChanged() {
            if (root.model.step === ScreenModel.Step.Access && root.isGranted)
                root.model.go(ScreenModel.Step.Find);
        }
    }
    // The user comes back from System Settings.
    Connections {
        target: Application
        function onStateChanged() {
            if (root.model.step === ScreenModel.Step.Access && Application.state === Qt.ApplicationActive)
                root.model.startAccessProbe();
        }
    }

    TwoToneTitle {
        primary: "Allow Full Disk Access"
        secondary: "So Vorn can read Messages"
        width: parent.width
    }
    Words {
        color: Theme.secondary
        text: "macOS keeps your Messages history behind Full Disk Access. Vorn opens a private copy, reads only your Nimbrel conversation, and deletes the copy right after."
        width: parent.width
    }
    NumberedStep {
        done: root.isGranted
        number: 1
        text: "Open System Settings → Privacy & Security → Full Disk Access."
        width: parent.width
    }
    NumberedStep {
        done: root.isGranted
        number: 2
        text: "Turn on Vorn. Not in the list? Click +, or drag Vorn in from Finder."
        width: parent.width
    }
    NumberedStep {
        done: root.isGranted
        number: 3
        text: "If macOS asks to quit and reopen Vorn, choose Quit & Reopen."
        width: parent.width
    }
    Flow {
        spacing: 12
        width: parent.width

        OutlineButtonStyle {
            label: "Open System Settings"
            onClicked: root.model.openFullDiskAccessSettings()
        }
        OutlineButtonStyle {
            label: "Show Vorn in Finder"
            onClicked: root.model.revealAppInFinder()
        }
    }
    StatusLine {
        text: root.statusText()
        tone: root.statusTone()
        width: parent.width
    }
    Column {
        spacing: 4
        visible: root.isDenied
        width: parent.width

        Words {
            color: Theme.secondary
            font: Theme.fonts.caption
            text: "Turned on but still waiting? Quit and reopen Vorn. After an update macOS can forget the switch: turn Vorn off and on again."
            width: parent.width
        }
        QuietLinkStyle {
            label: "Quit & Reopen Vorn"
            onClicked: root.model.relaunch()
        }
    }
    ActionRow {
        backTitle: "Back"
        primaryEnabled: root.isGranted
        primaryTitle: "Continue"
        onBack: root.model.go(ScreenModel.Step.Consent)
        onPrimary: root.model.go(ScreenModel.Step.Find)
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: ""

        AccessListMock {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            granted: root.isGranted
        }
    }
}
