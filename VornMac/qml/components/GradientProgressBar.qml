import QtQuick
import Vorn.Drawing

/// How much is done, with a name above it. It eases from one value to the next; a screen reader is told the true one.
Column {
    id: root

    required property string label
    required property double value // 0…1
    required property string percentage // the value for a screen reader

    spacing: 10
    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.label
    Accessible.description: root.percentage

    Words {
        Accessible.ignored: true
        font: Theme.fonts.bodyMedium
        text: root.label
        width: root.width
    }
    AccentBar {
        id: bar
        endColor: Theme.accentEnd
        height: 8
        startColor: Theme.accentStart
        trackColor: Theme.border
        value: root.value
        width: root.width

        Behavior on value {
            NumberAnimation {
                duration: Theme.progressEase
                easing.type: Easing.OutCubic
            }
        }
    }
}
