import QtQuick
import Vorn.Components
import Vorn.View

/// The application's one window.
Window {
    id: root

    required property ScreenModel model

    color: Theme.background
    height: 760
    minimumHeight: 700
    minimumWidth: 1040
    objectName: "main"
    title: Labels.windowTitle
    width: 1180

    RootView {
        anchors.fill: parent
        focus: true
        model: root.model
    }
}
