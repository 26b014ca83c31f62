import QtQuick

/// Text whose digits are all as wide as the widest, so that what counts does not jump and columns line up. These are
/// the digits 0 to 9, each in a cell of its own; what stands between them stays together, as letters may join, and
/// where writing goes from right to left all of it does.
Row {
    id: root

    required property string text
    property font font: Theme.fonts.body
    property color color: Theme.ink

    /// Hebrew, Arabic and their neighbours, and the marks that turn the direction.
    readonly property var rightToLeft: /[\u0590-\u08ff\u200f\u202b\u202e\u2067\ufb1d-\ufdff\ufe70-\ufefc\ud802\ud803\ud83a\ud83b]/
    readonly property var pieces: rightToLeft.test(text) ? [text] : text.match(/[0-9](?![\u0300-\u036f\u20d0-\u20ff\ufe0f])|(?:[^0-9]|[0-9](?=[\u0300-\u036f\u20d0-\u20ff\ufe0f]))+/g) ?? []

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    FontMetrics {
        id: metrics
        font: root.font
    }

    Repeater {
        model: root.pieces

        Text {
            required property string modelData
            // Qt 6.4 cannot bind a delegate to the ids around it.
            // qmllint disable unqualified
            readonly property bool isDigit: modelData.length === 1 && modelData >= "0" && modelData <= "9"

            Accessible.ignored: true
            color: root.color
            font: root.font
            horizontalAlignment: Text.AlignHCenter
            text: modelData
            textFormat: Text.PlainText
            width: isDigit ? Math.ceil(metrics.advanceWidth("0")) : implicitWidth
            // qmllint enable unqualified
        }
    }
}
