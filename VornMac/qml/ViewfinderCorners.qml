import QtQuick
import Vorn.Components
import Vorn.Drawing

/// The corners of a camera's viewfinder, around a code.
Item {
    component Corner: CornerBracket {
        color: Theme.ink
        height: width
        radius: 38 // the plate's radius plus the gap to the plate
        thickness: 3
        width: 48 + thickness // an arm plus the round cap of its stroke
        Accessible.ignored: true
    }

    Corner {}
    Corner {
        anchors.right: parent.right
        isRight: true
    }
    Corner {
        anchors.bottom: parent.bottom
        isBottom: true
    }
    Corner {
        anchors.bottom: parent.bottom
        anchors.right: parent.right
        isBottom: true
        isRight: true
    }
}
