import QtQuick

/// Text whose digits are all as wide as the widest, so that what counts does not jump and columns line up.
Row {
    id: root

    required property string text
    property font font: Theme.fonts.body
    property color color: Theme.ink

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    FontMetrics {
        id: metrics
        font: root.font
    }

    Repeater {
        model: root.text.length

        Text {
            required property int index
            // Qt 6.4 cannot bind a delegate to the ids around it.
            // qmllint disable unqualified
            readonly property string character: root.text.charAt(index)
            readonly property bool isDigit: character >= "0" && character <= "9"

            Accessible.ignored: true
            color: root.color
            font: root.font
            horizontalAlignment: Text.AlignHCenter
            text: character
            textFormat: Text.PlainText
            width: isDigit ? Math.ceil(metrics.advanceWidth("0")) : implicitWidth
            // qmllint enable unqualified
        }
    }
}
