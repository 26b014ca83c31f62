import QtQuick

/// Lies over the edge of a scrolling view, whose content fades there instead of being cut.
Rectangle {
    id: root

    property color surface: Theme.background
    property bool isAtBottom: false

    readonly property color clear: Qt.rgba(surface.r, surface.g, surface.b, 0)

    color: surface // hidden by the gradient, but nothing is drawn without one
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
