import QtQuick

/// Shows which control the keyboard acts on. Lay it over the control.
Rectangle {
    id: root

    required property bool shown
    property real cornerRadius: Theme.controlRadius

    anchors.fill: parent
    anchors.margins: -4
    color: "transparent"
    radius: cornerRadius + 4
    visible: shown
    border.color: Theme.focusRing
    border.width: 2
}
