import QtQuick
import Vorn.Components

/// A name on the left and its value on the right, under a divider.
Item {
    id: root

    required property string label
    required property string value
    property bool hasDivider: true

    implicitHeight: Math.max(44, name.implicitHeight + 24)
    Accessible.role: Accessible.StaticText
    Accessible.name: root.label + ": " + root.value

    Rectangle {
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: parent.right
        anchors.rightMargin: 16
        color: Theme.divider
        height: 1
        visible: root.hasDivider
    }
    Words {
        id: name
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: figure.left
        anchors.rightMargin: 12
        color: Theme.secondary
        text: root.label
        y: (root.height - implicitHeight + belowLetters) / 2
    }
    DigitText {
        id: figure
        Accessible.ignored: true
        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.baseline: name.baseline
        font: Theme.fonts.bodyMedium
        text: root.value
    }
}
