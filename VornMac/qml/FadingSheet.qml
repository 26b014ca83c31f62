import QtQuick

/// One of the two screens of a fade. The incoming one is rendered once, with the window's background below it, and
/// shown as one picture over the other: nothing shines through overlapping items, and few frames draw its texts. The
/// software renderer's layers are opaque and appear a frame late, which does not show here.
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
