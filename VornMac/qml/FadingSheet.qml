import QtQuick

/// One of the two screens of a cross-fade. The incoming one is rendered into a layer, with the window's background
/// below it, and shown over the other as one image: overlapping items do not show through each other, and few frames
/// draw its text. The software renderer's layers are opaque and appear one frame late, which is not noticeable here.
Item {
    id: root

    property bool isComing: false
    readonly property alias loader: loader

    layer.enabled: isComing

    Loader {
        anchors.fill: parent
        active: root.isComing
        sourceComponent: WindowGround {}
    }
    Loader {
        id: loader
        anchors.fill: parent
    }
}
