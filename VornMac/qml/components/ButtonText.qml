import QtQuick

/// The words on a button. The button is what a screen reader knows.
Text {
    Accessible.ignored: true
    textFormat: Text.PlainText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
