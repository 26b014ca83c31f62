import QtQuick
import Vorn.Components

/// How many messages were left out for one reason, and the reason.
Item {
    id: root

    required property string label
    required property string count
    required property string reason

    implicitHeight: column.height
    Accessible.name: label + ": " + count + ". " + reason
    Accessible.role: Accessible.StaticText

    Column {
        id: column
        width: parent.width

        Item {
            height: Math.max(name.implicitHeight, figure.implicitHeight)
            width: parent.width

            Words {
                id: name
                Accessible.ignored: true
                anchors.left: parent.left
                anchors.right: figure.left
                anchors.rightMargin: 12
                text: root.label
            }
            DigitText {
                id: figure
                Accessible.ignored: true
                anchors.right: parent.right
                font: Theme.fonts.bodyMedium
                text: root.count
            }
        }
        Words {
            Accessible.ignored: true
            color: Theme.secondary
            font: Theme.fonts.caption
            text: root.reason
            visible: text.length > 0
            width: parent.width
        }
    }
}
