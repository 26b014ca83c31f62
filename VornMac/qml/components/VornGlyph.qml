import QtQuick
import Vorn.Drawing

/// The brand mark.
Symbol {
    height: 28
    name: "vorn.glyph"
    width: 28
    Accessible.ignored: true
}
