import QtQuick
import Vorn.Components
import Vorn.View

/// Links this Mac to the account on the user's phone, by a code that the phone scans.
StepScreen {
    id: root

    readonly property string standing: model.isCodeRead ? Labels.stepIsDone : ""

    primaryTitle: model.text.retry
    onPrimary: model.startLinking()

    FieldLabel {
        text: root.model.text.heading
        width: parent.width
    }
    NumberedStep {
        done: root.model.isCodeRead
        number: 1
        standing: root.standing
        text: root.model.text.steps[0]
        width: parent.width
    }
    NumberedStep {
        done: root.model.isCodeRead
        number: 2
        standing: root.standing
        text: root.model.text.steps[1]
        width: parent.width
    }
    NumberedStep {
        isNext: root.model.isCodeRead
        number: 3
        standing: root.model.isCodeRead ? Labels.stepIsNext : ""
        text: root.model.text.steps[2]
        width: parent.width
    }
    Item {
        height: 4
        width: 1
    }
    StatusLine {
        spokenTone: root.model.text.status.spokenTone
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        width: parent.width
    }
    Words {
        color: Theme.secondary
        font: Theme.fonts.caption
        text: root.model.text.note
        topPadding: 4
        width: parent.width
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: root.model.text.caption

        QRCard {
            anchors.centerIn: parent
            expires: root.model.linkExpires
            hasFailed: root.model.hasLinkFailed
            isScanned: root.model.isCodeRead
            payload: root.model.qrPayload
            timeLeft: root.model.linkTimeLeft
        }
    }
}
