import QtQuick
import QtQuick.Templates as T
import Vorn.Components
import Vorn.Drawing

/// Who is signed in, and the way out.
PushButton {
    id: root

    required property string displayName
    readonly property string initial: firstCharacter(displayName).toUpperCase()
    readonly property string identity: "Signed in as " + displayName

    /// Who opens the menu by the keyboard sees where its focus is, there and afterwards.
    property int menuReason: Qt.PopupFocusReason

    signal signOut

    /// What the user takes for one character: a letter with its marks, a flag, or a picture of several joined ones.
    function firstCharacter(text: string): string {
        const one = "(?:[\\uD800-\\uDBFF][\\uDC00-\\uDFFF]|[^])";
        const marks = "(?:[\\u0300-\\u036F\\u20D0-\\u20FF\\uFE0F]|\\uD83C[\\uDFFB-\\uDFFF]|\\u200D" + one + ")*";
        const flag = "(?:\\uD83C[\\uDDE6-\\uDDFF]){2}";
        return text.match(new RegExp("^(?:" + flag + "|" + one + ")" + marks))?.[0] ?? "";
    }

    Accessible.name: "Account"
    Accessible.description: identity
    cornerRadius: height / 2
    implicitHeight: 34
    leftPadding: 12
    rightPadding: 12
    topPadding: 0
    bottomPadding: 0
    Accessible.role: Accessible.ButtonMenu
    text: displayName
    onClicked: {
        menuReason = visualFocus ? Qt.TabFocusReason : Qt.PopupFocusReason;
        menu.open();
    }

    contentItem: Row {
        spacing: 8

        Item {
            anchors.verticalCenter: parent.verticalCenter
            height: 20
            width: 20

            AccentBar {
                anchors.fill: parent
                endColor: Theme.accentEnd
                startColor: Theme.accentStart
            }
            Text {
                Accessible.ignored: true
                anchors.centerIn: parent
                color: Theme.outgoingInk
                font: Theme.fonts.badge
                objectName: "badge"
                text: root.initial
                textFormat: Text.PlainText
            }
        }
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            height: 12
            name: "chevron.down"
            width: 12
        }
    }
    background: Rectangle {
        border.color: Theme.border
        border.width: 1
        color: root.hovered ? Theme.pill : Theme.background
        radius: height / 2
    }

    T.Popup {
        id: menu
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        onClosed: root.forceActiveFocus(root.menuReason)
        onOpened: out.focusReason = root.menuReason
        focus: true
        height: implicitContentHeight + 16
        implicitHeight: height
        margins: 8
        modal: false
        padding: 8
        width: 260
        x: root.width - width
        y: root.height + 8

        background: Item {
            SoftShadow {
                anchors.fill: parent
                anchors.margins: -blur
                blur: 20
                color: Theme.shadow
                radius: 14
            }
            Rectangle {
                anchors.fill: parent
                border.color: Theme.border
                border.width: 1
                color: Theme.card
                radius: 14
            }
        }
        contentItem: Column {
            width: menu.availableWidth
            Accessible.role: Accessible.PopupMenu
            Accessible.name: "Account"

            Words {
                bottomPadding: 10
                color: Theme.secondary
                font: Theme.fonts.caption
                leftPadding: 10
                rightPadding: 10
                text: root.identity
                topPadding: 6
                width: menu.availableWidth
            }
            Rectangle {
                Accessible.role: Accessible.Separator
                color: Theme.divider
                height: 1
                width: menu.availableWidth
            }
            Item {
                height: 6
                width: 1
            }
            MenuEntry {
                id: out
                focus: true
                text: "Sign out of this Mac"
                width: menu.availableWidth
                onClicked: {
                    menu.close();
                    root.signOut();
                }
            }
        }
    }
}
