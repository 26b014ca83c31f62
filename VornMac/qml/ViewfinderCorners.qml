import QtQuick
import Vorn.Components
import Vorn.Drawing

/// The corners of a camera's viewfinder, around a code.
CornerBrackets {
    armLength: 44
    color: Theme.ink
    radius: 28
    thickness: 4
    Accessible.ignored: true
}
