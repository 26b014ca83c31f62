import QtQuick
import Vorn.Components
import Vorn.View

/// Shown instead of the screens until it is known who is signed in: what Vorn waits for, and what to do after a
/// refusal.
Column {
    id: root

    required property ScreenModel model

    spacing: 16

    StatusLine {
        anchors.horizontalCenter: parent.horizontalCenter
        spokenTone: root.model.keychain.status.spokenTone
        text: root.model.keychain.status.text
        tone: root.model.keychain.status.tone
        visible: text.length > 0
        width: Math.min(implicitWidth, root.width)
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12
        visible: root.model.keychain.retry.length > 0

        PrimaryButtonStyle {
            label: root.model.keychain.retry
            onClicked: root.model.start()
        }
        OutlineButtonStyle {
            label: root.model.keychain.primary
            onClicked: root.model.startSignedOut()
        }
    }
}
