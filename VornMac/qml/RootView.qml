import QtQuick
import Vorn.Components
import Vorn.View

/// What the window shows: the screen of the model's step, and who is signed in.
Rectangle {
    id: root

    required property ScreenModel model

    color: Theme.background
    Component.onCompleted: model.start()

    VornGlyph {
        x: Theme.sideMargin
        y: 39
    }
    CrossFade {
        anchors.fill: parent
        focus: true
        properties: ({
                model: root.model
            })
        screen: root.screenOf(root.model.step)
    }
    AccountMenu {
        anchors.right: parent.right
        anchors.rightMargin: 42
        anchors.top: parent.top
        anchors.topMargin: 36
        displayName: root.model.displayName
        initial: root.model.initial
        visible: root.model.isSignedIn
        onSignOut: root.model.signOut()
    }

    function screenOf(step: int): url {
        return Qt.resolvedUrl(["LinkScreen.qml", "ConsentScreen.qml", "AccessScreen.qml", "FindScreen.qml", "UploadScreen.qml", "DoneScreen.qml"][step]);
    }
}
