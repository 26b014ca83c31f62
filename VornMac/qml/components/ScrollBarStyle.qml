import QtQuick
import QtQuick.Templates as T

/// Shows the scroll position, and scrolls when dragged. Screen readers and keys scroll through the content instead.
T.ScrollBar {
    id: root

    Accessible.ignored: true
    implicitWidth: 12
    leftPadding: 4
    minimumSize: height > 0 ? Math.min(1, 32 / height) : 0
    padding: 2
    visible: size < 1

    contentItem: Rectangle {
        color: root.pressed || root.hovered ? Theme.secondary : Theme.tertiary
        implicitWidth: 6
        radius: width / 2
    }
}
