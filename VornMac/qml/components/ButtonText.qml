import QtQuick

/// The text of a button. Screen readers see only the button.
Text {
    Accessible.ignored: true
    textFormat: Text.PlainText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
