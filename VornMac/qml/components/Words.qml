import QtQuick

/// Text that is read out as it is shown. Nothing in it is markup.
Text {
    color: Theme.ink
    font: Theme.fonts.body
    textFormat: Text.PlainText
    lineHeight: 1.15
    wrapMode: Text.Wrap
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text.length === 0
}
