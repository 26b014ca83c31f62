import QtQuick
import Vorn.Components
import Vorn.View

/// In place of the screens while it is not known who is signed in: what is waited for, and what to do after a refusal.
Column {
    id: root

    required property ScreenModel model

    readonly property bool isRefused: model.restorePhase === ScreenModel.RestorePhase.Refused

    spacing: 16

    StatusLine {
        anchors.horizontalCenter: parent.horizontalCenter
        text: root.model.restoreNote
        tone: root.isRefused ? StatusLine.Warning : StatusLine.Waiting
        visible: text.length > 0
        width: Math.min(implicitWidth, root.width)
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 12
        visible: root.isRefused

        PrimaryButtonStyle {
            label: "Try again"
            onClicked: root.model.start()
        }
        OutlineButtonStyle {
            label: "Link this Mac again"
            onClicked: root.model.startSignedOut()
        }
    }
}
