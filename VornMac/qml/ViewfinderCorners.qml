import QtQuick
import Vorn.Components
import Vorn.Drawing

/// The corners of a camera's viewfinder, around a code.
CornerBrackets {
    armLength: 48
    color: Theme.ink
    radius: 38 // the plate's, and the gap between them
    thickness: 3
    Accessible.ignored: true
}
