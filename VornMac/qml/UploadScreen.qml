import QtQuick
import Vorn.Components
import Vorn.View

/// Shows the upload's progress.
StepScreen {
    id: root

    primaryTitle: model.text.retry
    onPrimary: model.lookForChat()

    GradientProgressBar {
        amounts: root.model.uploadBar.amounts
        isBusy: root.model.uploadBar.isBusy
        label: Labels.archiveName
        percentage: root.model.uploadBar.percentage
        percents: root.model.uploadBar.percents
        value: root.model.uploadBar.value
        width: parent.width
    }
    StatusLine {
        spokenTone: root.model.text.status.spokenTone
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        width: parent.width
    }

    preview: RewardPanel {
        anchors.fill: parent
        model: root.model
    }
}
