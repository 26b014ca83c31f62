import QtQuick
import Vorn.Drawing

/// One of several things to do, in order.
Item {
    id: root

    required property int number
    required property string text
    property bool done: false
    /// Whether it is the next one to do.
    property bool isNext: false
    /// Its state, for a screen reader.
    property string standing: ""
    /// Whether it cannot be done now.
    property bool isMuted: false

    implicitHeight: Math.max(disc.height, words.y + words.implicitHeight)
    implicitWidth: disc.width + 12 + words.implicitWidth

    Accessible.role: Accessible.ListItem
    Accessible.name: root.number + ". " + root.text
    Accessible.description: root.standing

    Rectangle {
        id: disc
        color: root.isNext ? Theme.primaryFill : root.isMuted ? "transparent" : Theme.pill
        height: 24
        radius: height / 2
        width: 24
        border.color: root.isNext ? Theme.primaryFill : Theme.border
        border.width: 1

        Text {
            Accessible.ignored: true
            anchors.centerIn: parent
            color: root.isNext ? Theme.primaryText : root.isMuted ? Theme.secondary : Theme.ink
            font: Theme.fonts.caption
            text: root.number
            visible: !root.done
        }
        Symbol {
            anchors.centerIn: parent
            color: Theme.success
            height: 14
            name: "checkmark"
            visible: root.done
            width: 14
        }
    }
    Words {
        id: words
        Accessible.ignored: true
        anchors.left: disc.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        color: root.isMuted ? Theme.secondary : Theme.ink
        // The first line is level with the number, however many lines there are.
        y: Math.max(0, (disc.height - letterHeight) / 2)
        text: root.text
    }
}
