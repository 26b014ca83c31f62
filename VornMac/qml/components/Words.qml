import QtQuick

/// Plain text, which screen readers speak as it is shown.
Text {
    id: root

    /// The height of a line's letters, to align things with the first line.
    readonly property real letterHeight: metrics.height
    readonly property real capitalHeight: capital.tightBoundingRect.height
    /// The room that a line takes below its baseline.
    readonly property real belowBaseline: metrics.height * lineHeight - metrics.ascent

    /// The extra line spacing below the letters of the last line.
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
        text: "1" // as tall as a capital letter
    }
}
