import QtQuick

/// The text of a button. Screen readers know the button alone.
Text {
    Accessible.ignored: true
    textFormat: Text.PlainText
    elide: Text.ElideRight
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
}
