import QtQuick
import Vorn.Components
import Vorn.View

/// What the account menu holds.
Item {
    id: root

    required property string identity

    signal signOut

    /// Shows why the first entry has the focus. Qt gives a popup's its own reason whenever one opens.
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
