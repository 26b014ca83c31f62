import QtQuick

/// One of the two screens of a fade. The one that comes is drawn once, with the window's ground below it, and shown as
/// one picture over the other: nothing shines through what lies above it, and few frames draw its texts. The software
/// renderer's layers are opaque and begin a frame late; of what comes, nobody sees that.
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
