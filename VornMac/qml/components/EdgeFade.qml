import QtQuick

/// Overlays an edge of a scrolling view, so that the content fades out instead of being cut off.
Rectangle {
    id: root

    property color surface: Theme.background
    property bool isAtBottom: false

    readonly property color clear: Qt.rgba(surface.r, surface.g, surface.b, 0)

    color: surface // hidden by the gradient, but Qt draws no rectangle with a transparent colour
    gradient: Gradient {
        GradientStop {
            color: root.isAtBottom ? root.clear : root.surface
            position: 0
        }
        GradientStop {
            color: root.isAtBottom ? root.surface : root.clear
            position: 1
        }
    }
    height: 24
}
