import QtQuick
import Vorn.Components
import Vorn.View

/// Shows what the review says, and what the user earned.
StepScreen {
    id: root

    primaryIsQuiet: !model.isOutcomeFinal // there is no reason to leave yet
    onPrimary: model.lookForChat()

    Repeater {
        model: root.model.text.lead

        Words {
            required property string modelData

            text: modelData
            width: parent ? parent.width : 0 // null while the screen is being destroyed
        }
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

    preview: RewardPanel {
        anchors.fill: parent
        model: root.model
    }
}
