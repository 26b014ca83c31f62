import QtQuick

/// Text whose digits are all as wide as the widest, so that what counts does not jump and columns line up. These are
/// the digits 0 to 9, each in a cell of its own; what stands between them stays together, as letters may join, and
/// where writing goes from right to left all of it does.
Row {
    id: root

    required property string text
    property font font: Theme.fonts.body
    property color color: Theme.ink

    readonly property var pieces: piecesOf(text)
    /// Not a whole number of pixels: rounded up, digits would stand apart.
    readonly property real digitWidth: Math.max(...Array.from("0123456789", digit => widthOf(digit, metrics.font)))

    baselineOffset: metrics.ascent

    /// `font` is the metrics' own: another one has this worked out again.
    function widthOf(piece: string, font: font): real {
        return metrics.advanceWidth(piece);
    }

    /// Whether `scalar` is of Hebrew, Arabic or their neighbours, or a mark that turns the direction.
    function isRightToLeft(scalar: string): bool {
        const code = scalar.codePointAt(0);
        return /[\u0590-\u08ff\u200f\u202b\u202e\u2067\ufb1d-\ufdff\ufe70-\ufefc]/.test(scalar) || (code >= 0x10800 && code < 0x11000) || (code >= 0x1e800 && code < 0x1f000);
    }

    /// Whether `scalar` changes what stands before it: a digit with a mark, as in a keycap, is no digit.
    function isMark(scalar: string): bool {
        const code = scalar.codePointAt(0);
        return /[\u0300-\u036f\u20d0-\u20ff\ufe00-\ufe0f\u200d]/.test(scalar) || (code >= 0xe0100 && code < 0xe01f0);
    }

    function piecesOf(text: string): var {
        // Not the halves of those that UTF-16 writes in two, which Qt 6.4 iterates over.
        const scalars = text.match(/[\ud800-\udbff][\udc00-\udfff]|[^]/g) ?? [];
        if (scalars.some(isRightToLeft))
            return [text];
        const pieces = [];
        let isOpen = false; // what is no digit goes on in the last piece
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
        model: root.pieces.length // which stays while it counts, and so do the texts

        Text {
            required property int index
            // Qt 6.4 cannot bind a delegate to the ids around it.
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
