import QtQuick
import Vorn.Components
import Vorn.View

/// Shows what is on this Mac, before anything leaves it, and offers the upload.
StepScreen {
    id: root

    /// Whether there is nothing to upload, so that the primary button looks for the chat again.
    readonly property bool isDeadEnd: model.text.primary.length === 0

    otherTitle: isDeadEnd ? "" : model.text.retry
    primaryIgnoresReturn: !isDeadEnd // an upload is never started by a stray Return
    primaryEnabled: isDeadEnd || model.canUpload
    primaryTitle: isDeadEnd ? model.text.retry : model.text.primary
    onBack: model.backToConsent()
    onOther: model.lookForChat()
    onPrimary: {
        if (isDeadEnd)
            model.lookForChat();
        else
            model.upload();
    }

    StatusLine {
        spokenTone: root.model.text.status.spokenTone
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        visible: text.length > 0
        width: parent.width
    }
    Hints {
        advice: root.model.text.hints[1] ?? ""
        what: root.model.text.hints[0] ?? ""
        width: parent.width
    }
    StatisticsCard {
        labels: root.model.statisticsLabels
        values: root.model.statisticsValues
        visible: root.model.isFound
        width: parent.width
    }
    StatusLine {
        spokenTone: root.model.text.remark.spokenTone
        text: root.model.text.remark.text
        tone: root.model.text.remark.tone
        visible: text.length > 0
        width: parent.width
    }

    preview: Item {
        anchors.fill: parent

        LocalPreview {
            anchors.bottomMargin: everything.visible ? everything.height - 4 : 0 // the caption is above the link
            anchors.fill: parent
            caption: root.model.text.caption
            isLooking: root.model.isLooking
            messages: root.model.preview
            showsMessages: root.model.isFound
        }
        QuietLinkStyle {
            id: everything
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 18
            anchors.horizontalCenter: parent.horizontalCenter
            label: root.model.everything.seeLabel
            visible: root.model.isFound
            onClicked: {
                forceActiveFocus(focusReason); // a press by a screen reader does not move the focus
                root.model.everything.open();
            }
        }
    }
}
