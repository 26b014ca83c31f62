import QtQuick
import Vorn.Components
import Vorn.View

/// Shows what is on this Mac, before anything leaves it, and offers the upload.
StepScreen {
    id: root

    step: 3

    TwoToneTitle {
        primary: root.model.text.title
        secondary: root.model.text.subtitle
        width: parent.width
    }
    StatusLine {
        text: root.model.text.status.text
        tone: root.model.text.status.tone
        visible: text.length > 0
        width: parent.width
    }
    Column {
        spacing: 12
        visible: root.model.text.hints.length > 0
        width: parent.width

        Words {
            text: root.model.text.hints[0] ?? ""
            width: parent.width
        }
        Words {
            color: Theme.secondary
            text: root.model.text.hints[1] ?? ""
            width: parent.width
        }
    }
    StatisticsCard {
        labels: root.model.statisticsLabels
        values: root.model.statisticsValues
        visible: root.model.isFound
        width: parent.width
    }
    StatusLine {
        text: root.model.text.remark.text
        tone: root.model.text.remark.tone
        visible: text.length > 0
        width: parent.width
    }
    OutlineButtonStyle {
        label: root.model.text.retry
        visible: label.length > 0
        onClicked: root.model.go(ScreenModel.Step.Find)
    }
    ActionRow {
        backTitle: root.model.text.back
        primaryEnabled: root.model.canUpload
        primaryTitle: root.model.text.primary
        onBack: root.model.go(ScreenModel.Step.Consent)
        onPrimary: root.model.upload()
    }

    preview: LocalPreview {
        anchors.fill: parent
        caption: root.model.text.caption
        messages: root.model.preview
        showsMessages: root.model.isFound
    }
}
