import QtQuick
import Vorn.Components
import Vorn.Drawing

/// One point of a list, with a symbol for its subject.
Item {
    id: root

    required property string symbol
    required property string text
    property color symbolColor: Theme.secondary

    implicitHeight: words.implicitHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: root.text

    Symbol {
        color: root.symbolColor
        height: 18
        name: root.symbol
        width: 18
        y: (words.letterHeight - height) / 2
    }
    Words {
        id: words
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 30
        anchors.right: parent.right
        color: Theme.secondary
        text: root.text
    }
}
