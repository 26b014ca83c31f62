import QtQuick
import Vorn.Components
import Vorn.View

/// Guides the user to Full Disk Access, and continues by itself once it is granted.
StepScreen {
    id: root

    readonly property bool isGranted: model.access === ScreenModel.Access.Granted
    /// Without Messages there is nothing to grant access to yet.
    readonly property bool isMuted: model.access === ScreenModel.Access.NoDatabase

    /// Whether the first step is the next one, which the primary button does. Whether the other steps are done is
    /// unknown until access is granted.
    readonly property bool isFirstNext: model.access === ScreenModel.Access.Denied
    readonly property string standing: isGranted ? Labels.stepIsDone : ""

    onBack: model.backToConsent()
    onPrimary: {
        if (isGranted)
            model.lookForChat();
        else
            model.openFullDiskAccessSettings();
    }

    // Continues only when access changes while the screen is shown: a database that opens may still be unreadable, and
    // a user who is sent back here must not be sent on at once.
    Connections {
        target: root.model
        function onAccessChanged() {
            if (root.isGranted)
                root.model.goOnOnceAccessIsSeen();
        }
    }
    // The user may have returned from System Settings.
    Connections {
        target: Application
        function onStateChanged() {
            if (Application.state === Qt.ApplicationActive)
                root.model.startAccessProbe();
        }
    }

    Words {
        color: Theme.secondary
        text: root.model.text.lead[0]
        width: parent.width
    }
    NumberedStep {
        done: root.isGranted
        isMuted: root.isMuted
        isNext: root.isFirstNext
        number: 1
        standing: root.isFirstNext ? Labels.stepIsNext : root.standing
        text: root.model.text.steps[0]
        width: parent.width
    }
    Column {
        spacing: 4
        width: parent.width

        NumberedStep {
            done: root.isGranted
            isMuted: root.isMuted
            number: 2
            standing: root.standing
            text: root.model.text.steps[1]
            width: parent.width
        }
        QuietLinkStyle {
            label: Labels.showInFinder
            x: 36 // aligned with the text of its step
            onClicked: root.model.revealAppInFinder()
        }
    }
    NumberedStep {
        done: root.isGranted
        isMuted: root.isMuted
        number: 3
        standing: root.standing
        text: root.model.text.steps[2]
        width: parent.width
    }
    StatusLine {
        spokenTone: root.model.text.status.spokenTone
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        width: parent.width
    }
    Column {
        spacing: 4
        visible: root.model.text.note.length > 0
        width: parent.width

        Words {
            color: Theme.secondary
            font: Theme.fonts.caption
            text: root.model.text.note
            width: parent.width
        }
        QuietLinkStyle {
            label: root.model.text.retry
            onClicked: root.model.relaunch()
        }
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: root.model.text.caption

        AccessListMock {
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            granted: root.isGranted
            pulses: root.model.access === ScreenModel.Access.Denied
        }
    }
}
