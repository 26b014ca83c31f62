import QtQuick
import Vorn.Components

/// The background of every screen: the window's colour, and the panel in its place.
Rectangle {
    id: root

    color: Theme.background

    WindowGrid {
        id: grid
        height: root.height
        width: root.width
    }
    Rectangle {
        color: Theme.panel
        height: grid.bottom - grid.top
        objectName: "panel"
        radius: Theme.panelRadius
        width: Theme.panelWidth
        x: grid.right - width
        y: grid.top
    }
}
