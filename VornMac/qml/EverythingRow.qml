import QtQuick
import Vorn.Components
import Vorn.Drawing

/// One message with everything of it that is uploaded, beside a bar in its sender's colour.
Item {
    id: root

    required property string author
    required property string detail
    required property string text
    required property string rest
    required property string links
    required property string attachments
    required property string spoken
    required property bool fromMe

    // Laid out by hand: a Column sets its height one frame later, too late for a list that scrolls to its end.
    readonly property real inset: 24
    readonly property real room: width - 2 * inset
    readonly property real spacing: 4

    implicitHeight: Math.ceil(bar.height) + 24
    Accessible.focused: activeFocus
    Accessible.name: spoken
    Accessible.role: Accessible.ListItem

    /// The position below `part`.
    function below(part: Item): real {
        return part.y + (part.visible ? part.height + spacing : 0);
    }

    component Mark: Item {
        id: mark

        required property string symbol
        required property string text

        height: words.implicitHeight
        visible: text.length > 0

        Symbol {
            color: Theme.secondary
            height: 14
            name: mark.symbol
            width: 14
            y: (words.letterHeight - height) / 2
        }
        Words {
            id: words
            Accessible.ignored: true
            color: Theme.secondary
            font: Theme.fonts.caption
            text: mark.text
            width: mark.width - x
            x: 22
        }
    }

    Rectangle {
        id: bar
        color: root.fromMe ? Theme.outgoingBubble : Theme.tertiary
        height: root.below(files) - y - root.spacing
        radius: width / 2
        width: 3
        x: 8
        y: 12
    }
    Words {
        id: author
        Accessible.ignored: true
        font: Theme.fonts.bodyMedium
        text: root.author
        x: root.inset
        y: bar.y
    }
    Words {
        id: detail
        Accessible.ignored: true
        anchors.baseline: author.baseline
        anchors.left: author.right
        anchors.leftMargin: 12
        color: Theme.secondary
        font: Theme.fonts.caption
        horizontalAlignment: Text.AlignRight
        text: root.detail
        width: root.inset + root.room - x
    }
    Words {
        id: words
        Accessible.ignored: true
        text: root.text
        visible: text.length > 0
        width: root.room
        x: root.inset
        y: author.y + Math.max(author.height, detail.y - author.y + detail.height) + root.spacing
    }
    Words {
        id: more
        Accessible.ignored: true
        color: Theme.secondary
        font: Theme.fonts.caption
        text: root.rest
        visible: text.length > 0
        width: root.room
        x: root.inset
        y: root.below(words)
    }
    Mark {
        id: addresses
        symbol: "link"
        text: root.links
        width: root.room
        x: root.inset
        y: root.below(more)
    }
    Mark {
        id: files
        symbol: "paperclip"
        text: root.attachments
        width: root.room
        x: root.inset
        y: root.below(addresses)
    }
    FocusRing {
        anchors.leftMargin: 2
        anchors.margins: 2
        anchors.rightMargin: 14
        cornerRadius: 8
        shown: root.activeFocus
    }
}
