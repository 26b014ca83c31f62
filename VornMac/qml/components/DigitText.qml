import QtQuick

/// Text whose digits are all as wide as the widest, so that a count does not jump and columns line up. Each digit 0 to
/// 9 has a cell of its own. The text between digits stays in one piece, as its letters may join; text with
/// right-to-left characters is not split at all.
Row {
    id: root

    required property string text
    property font font: Theme.fonts.body
    property color color: Theme.ink

    readonly property var pieces: piecesOf(text)
    /// Not rounded up to whole pixels: the digits would look too far apart.
    readonly property real digitWidth: Math.max(...Array.from("0123456789", digit => widthOf(digit, metrics.font)))

    baselineOffset: metrics.ascent

    /// `font` is always the metrics' font: passing it makes the caller's binding follow changes of the font.
    function widthOf(piece: string, font: font): real {
        return metrics.advanceWidth(piece);
    }

    /// Whether `scalar` is in a right-to-left script, such as Hebrew or Arabic, or is a right-to-left control
    /// character.
    function isRightToLeft(scalar: string): bool {
        const code = scalar.codePointAt(0);
        return /[\u0590-\u08ff\u200f\u202b\u202e\u2067\ufb1d-\ufdff\ufe70-\ufefc]/.test(scalar) || (code >= 0x10800 && code < 0x11000) || (code >= 0x1e800 && code < 0x1f000);
    }

    /// Whether `scalar` modifies the scalar that precedes it: a digit followed by a mark, as in a keycap, is not a
    /// digit.
    function isMark(scalar: string): bool {
        const code = scalar.codePointAt(0);
        return /[\u0300-\u036f\u20d0-\u20ff\ufe00-\ufe0f\u200d]/.test(scalar) || (code >= 0xe0100 && code < 0xe01f0);
    }

    function piecesOf(text: string): var {
        // Keeps surrogate pairs together: iterating over a string in Qt 6.4 yields their halves.
        const scalars = text.match(/[\ud800-\udbff][\udc00-\udfff]|[^]/g) ?? [];
        if (scalars.some(isRightToLeft))
            return [text];
        const pieces = [];
        let isOpen = false; // the last piece takes further text
        for (const scalar of scalars) {
            const isDigit = scalar >= "0" && scalar <= "9";
            if (pieces.length > 0 && (isMark(scalar) || (isOpen && !isDigit)))
                pieces.push(pieces.pop() + scalar);
            else
                pieces.push(scalar);
            isOpen = !isDigit;
        }
        return pieces;
    }

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    FontMetrics {
        id: metrics
        font: root.font
    }

    Repeater {
        model: root.pieces.length // not the pieces: the items stay while only digits change

        Text {
            required property int index
            // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
            // qmllint disable unqualified
            readonly property string piece: root.pieces[index] ?? ""
            readonly property bool isDigit: piece.length === 1 && piece >= "0" && piece <= "9"

            Accessible.ignored: true
            color: root.color
            font: root.font
            horizontalAlignment: Text.AlignHCenter
            text: piece
            textFormat: Text.PlainText
            width: isDigit ? root.digitWidth : root.pieces.length === 1 ? implicitWidth : root.widthOf(piece, metrics.font)
            // qmllint enable unqualified
        }
    }
}
