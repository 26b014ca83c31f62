import QtQuick
import Vorn.Components

/// Shows one screen, and fades to the next when `screen` changes. The outgoing screen takes no input and keeps showing
/// its state from when it was frozen.
FocusScope {
    id: root

    required property url screen
    /// Properties given to each screen.
    required property var properties
    readonly property bool isFading: fade.running

    property FadingSheet shown: first
    readonly property StepScreen current: shown.loader.item as StepScreen
    readonly property FadingSheet going: shown === first ? second : first

    /// Keeps the screen as it is until the next one has taken its place.
    function freeze() {
        current?.freeze();
    }

    onScreenChanged: show()
    Component.onCompleted: show()

    function show() {
        if (shown.loader.source === screen)
            return;
        fade.complete();
        const isFirst = shown.loader.status === Loader.Null;
        if (!isFirst)
            shown = going;
        shown.loader.setSource(screen, properties);
        shown.loader.focus = true;
        if (isFirst)
            return;
        shown.opacity = 0;
        fade.start();
    }

    FadingSheet {
        id: first
        anchors.fill: parent
        isComing: root.isFading && root.shown === first
        z: root.shown === first ? 2 : 0
    }
    FadingSheet {
        id: second
        anchors.fill: parent
        isComing: root.isFading && root.shown === second
        z: root.shown === second ? 2 : 0
    }
    // Over the outgoing screen, below the incoming one.
    MouseArea {
        anchors.fill: parent
        enabled: root.isFading
        preventStealing: true
        visible: enabled
        z: 1
    }

    NumberAnimation {
        id: fade
        duration: Theme.crossFade
        easing.type: Easing.InOutQuad
        property: "opacity"
        target: root.shown
        to: 1
        onFinished: root.going.loader.source = ""
    }
}
