import QtQuick
import Vorn.Drawing

/// A progress bar with a label and figures. It eases from one value to the next, while screen readers get the exact
/// one. While the progress is unknown, a highlight sweeps along the bar.
Column {
    id: root

    required property string label
    required property double value // 0…1
    required property string percentage // the value for a screen reader
    property bool isBusy: false
    property string percents: "" // the value beside the label
    property string amounts: "" // the text below the bar, where room for it is always kept

    spacing: 10
    Accessible.role: Accessible.ProgressBar
    Accessible.name: root.label
    Accessible.description: root.percentage

    Item {
        height: name.implicitHeight
        width: root.width

        Words {
            id: name
            Accessible.ignored: true
            anchors.left: parent.left
            anchors.right: share.left
            anchors.rightMargin: Theme.gap
            font: Theme.fonts.bodyMedium
            text: root.label
        }
        Words {
            id: share
            Accessible.ignored: true
            anchors.right: parent.right
            font: Theme.fonts.bodyMedium
            text: root.percents
        }
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
        NumberAnimation on sweep {
            duration: 1400
            from: 0
            loops: Animation.Infinite
            running: root.isBusy && motion.isOn
            to: 1
            onRunningChanged: {
                if (!running)
                    bar.sweep = -1;
            }
        }
    }
    Motion {
        id: motion
        item: root
    }
    Words {
        color: Theme.secondary
        font: Theme.fonts.caption
        height: Math.ceil(letterHeight)
        lineHeight: 1
        text: root.amounts
        width: root.width
    }
}
