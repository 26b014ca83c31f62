import QtQuick
import Vorn.Components

/// What happened and, in a quieter colour, what to do about it. Hidden when there is nothing to say.
Column {
    id: root

    required property string what
    required property string advice

    spacing: 12
    visible: what.length > 0

    Words {
        text: root.what
        width: parent.width
    }
    Words {
        color: Theme.secondary
        text: root.advice
        width: parent.width
    }
}
