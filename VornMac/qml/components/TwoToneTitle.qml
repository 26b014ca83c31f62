import QtQuick
import Vorn.System

/// A title of two lines in two tones. Screen readers speak it when it appears, and when it changes.
Column {
    id: root

    required property string primary
    required property string secondary
    /// Both lines, for a screen reader.
    readonly property string spoken: root.primary + " " + root.secondary

    spacing: 0
    Component.onCompleted: Announcer.announce(root, spoken)
    onSpokenChanged: Announcer.announce(root, spoken)
    Accessible.role: Accessible.Heading
    Accessible.name: root.spoken

    Words {
        Accessible.ignored: true
        color: Theme.ink
        font: Theme.fonts.title
        lineHeight: 1.05
        text: root.primary
        width: root.width
    }
    Words {
        Accessible.ignored: true
        color: Theme.secondary
        font: Theme.fonts.title
        lineHeight: 1.05
        text: root.secondary
        width: root.width
    }
}
