import QtQuick
import Vorn.Components
import Vorn.View

/// The content of the account menu.
Item {
    id: root

    required property string identity

    signal signOut

    /// Sets the reason for the first entry's focus. Qt sets one of its own whenever a popup opens.
    function showFocus(reason: int) {
        out.focusReason = reason;
    }

    implicitHeight: column.implicitHeight
    Accessible.role: Accessible.PopupMenu
    Accessible.name: Labels.account

    Column {
        id: column
        width: root.width

        Words {
            bottomPadding: 10
            color: Theme.secondary
            font: Theme.fonts.caption
            leftPadding: 10
            rightPadding: 10
            text: root.identity
            topPadding: 6
            width: column.width
        }
        Rectangle {
            Accessible.role: Accessible.Separator
            color: Theme.divider
            height: 1
            width: column.width
        }
        Item {
            height: 6
            width: 1
        }
        MenuEntry {
            id: out
            focus: true
            label: Labels.signOut
            width: column.width
            onClicked: root.signOut()
        }
    }
}
