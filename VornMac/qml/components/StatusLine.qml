import QtQuick
import Vorn.Drawing
import Vorn.System

/// One line of state: a symbol for its tone, and text. Screen readers speak it when it changes, wherever the focus is.
Item {
    id: root

    enum Tone { Waiting, Good, Warning, Bad }

    required property int tone // a StatusLine.Tone
    required property string text
    /// The symbol's meaning for a screen reader.
    property string spokenTone: ""

    readonly property string symbol: symbolOf(tone)

    function symbolOf(tone: int): string {
        switch (tone) {
        case StatusLine.Good:
            return "checkmark.circle.fill";
        case StatusLine.Warning:
            return "exclamationmark.circle.fill";
        case StatusLine.Bad:
            return "xmark.circle.fill";
        default:
            return "";
        }
    }

    function colorOf(tone: int): color {
        switch (tone) {
        case StatusLine.Good:
            return Theme.success;
        case StatusLine.Warning:
            return Theme.warning;
        default:
            return Theme.bad;
        }
    }

    implicitHeight: words.implicitHeight
    implicitWidth: icon.width + Theme.gap + words.implicitWidth

    // One accessible element for both children, so that screen readers speak it once.
    Accessible.role: Accessible.StaticText
    Accessible.name: root.text
    Accessible.description: root.spokenTone
    onTextChanged: Announcer.announce(root, root.text)

    Item {
        id: icon
        height: words.letterHeight
        width: 18

        Spinner {
            anchors.centerIn: parent
            visible: root.tone === StatusLine.Waiting
        }
        Symbol {
            anchors.centerIn: parent
            color: root.colorOf(root.tone)
            height: 18
            name: root.symbol
            visible: root.symbol.length > 0
            width: 18
        }
    }
    Words {
        id: words
        Accessible.ignored: true
        anchors.left: icon.right
        anchors.leftMargin: Theme.gap
        anchors.right: parent.right
        text: root.text
    }
}
