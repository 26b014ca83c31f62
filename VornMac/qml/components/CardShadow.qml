import QtQuick
import Vorn.Drawing

/// The shadow of its parent, a card: soft, offset downwards, and the same for every card.
SoftShadow {
    id: root

    readonly property int drop: 10

    anchors.bottomMargin: -blur - drop
    anchors.fill: parent
    anchors.leftMargin: -blur
    anchors.rightMargin: -blur
    anchors.topMargin: -blur + drop
    blur: 32
    color: Theme.shadow
    radius: (parent as Rectangle)?.radius ?? 0
    z: -1 // below the card
}
