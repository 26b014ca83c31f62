import QtQuick
import Vorn.Components

/// Shows one screen, and fades to the next when `screen` changes. What goes takes no more input, and shows what it
/// showed when it was frozen.
FocusScope {
    id: root

    required property url screen
    /// What each screen is given.
    required property var properties
    readonly property bool isFading: fade.running

    property Loader shown: first
    readonly property StepScreen current: shown.item as StepScreen
    readonly property Loader going: shown === first ? second : first

    /// Has what is shown stay as it is until the next screen has taken its place.
    function freeze() {
        current?.freeze();
    }

    onScreenChanged: show()
    Component.onCompleted: show()

    function show() {
        if (shown.source === screen)
            return;
        fade.complete();
        const isFirst = shown.status === Loader.Null;
        if (!isFirst)
            shown = going;
        shown.setSource(screen, properties);
        shown.focus = true;
        if (isFirst)
            return;
        shown.opacity = 0;
        fade.start();
    }

    Loader {
        id: first
        anchors.fill: parent
        focus: true
        z: root.shown === first ? 2 : 0
    }
    Loader {
        id: second
        anchors.fill: parent
        z: root.shown === second ? 2 : 0
    }
    // Over the screen that goes, below the one that comes.
    MouseArea {
        anchors.fill: parent
        enabled: root.isFading
        preventStealing: true
        visible: enabled
        z: 1
    }

    ParallelAnimation {
        id: fade

        NumberAnimation {
            duration: Theme.crossFade
            easing.type: Easing.InOutQuad
            property: "opacity"
            target: root.shown
            to: 1
        }
        NumberAnimation {
            duration: Theme.crossFade
            easing.type: Easing.InOutQuad
            property: "opacity"
            target: root.going
            to: 0
        }
        onFinished: root.going.source = ""
    }
}
