import QtQuick
import Vorn.Components

/// A part of a form under its heading.
Column {
    id: root

    required property string title

    spacing: 6

    FieldLabel {
        color: Theme.ink
        text: root.title
        width: parent.width
    }
}
