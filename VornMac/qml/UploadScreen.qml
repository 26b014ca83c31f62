import QtQuick
import Vorn.Components
import Vorn.View

/// Shows how far the upload has come.
StepScreen {
    id: root

    step: 4

    TwoToneTitle {
        primary: root.model.text.title
        secondary: root.model.text.subtitle
        width: parent.width
    }
    Item {
        height: 4
        width: 1
    }
    GradientProgressBar {
        label: Labels.archiveName
        percentage: root.model.uploadPercentage
        value: root.model.uploadFraction
        width: parent.width
    }
    StatusLine {
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        width: parent.width
    }
    ActionRow {
        primaryTitle: root.model.text.retry
        visible: primaryTitle.length > 0
        onPrimary: root.model.go(ScreenModel.Step.Find)
    }

    preview: PreviewPanel {
        anchors.fill: parent
        caption: root.model.text.caption
        isHeading: true

        RewardCard {
            amount: root.model.reward
            anchors.centerIn: parent
            width: parent.width
        }
    }
}
