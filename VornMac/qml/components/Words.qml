import QtQuick

/// Text that is read out as it is shown. Nothing in it is markup.
Text {
    id: root

    /// How high the letters of a line are, for what stands level with the first.
    readonly property real letterHeight: metrics.height
    readonly property real capitalHeight: capital.tightBoundingRect.height
    /// What a line takes below its baseline.
    readonly property real belowBaseline: metrics.height * lineHeight - metrics.ascent

    /// What the last line keeps free for another below it.
    readonly property real belowLetters: metrics.height * (lineHeight - 1)

    color: Theme.ink
    font: Theme.fonts.body
    textFormat: Text.PlainText
    lineHeight: 1.15
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text.length === 0

    FontMetrics {
        id: metrics
        font: root.font
    }
    TextMetrics {
        id: capital
        font: root.font
        text: "1" // as high as a capital
    }
}
