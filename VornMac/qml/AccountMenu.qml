import QtQuick
import QtQuick.Templates as T
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The signed-in user, with a menu to sign out.
PushButton {
    id: root

    required property ScreenModel model

    /// The focus reason in the menu, and afterwards on the button: one that shows the focus if a key opened the menu.
    property int menuReason: Qt.PopupFocusReason

    /// Closes the menu without taking the focus back.
    function dismiss() {
        focus = false;
        menu.close();
    }

    Accessible.name: Labels.account
    Accessible.description: model.identity
    visible: model.isSignedIn
    cornerRadius: height / 2
    implicitHeight: 34
    leftPadding: 12
    rightPadding: 12
    topPadding: 0
    bottomPadding: 0
    Accessible.role: Accessible.ButtonMenu
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
                text: root.model.initial
                textFormat: Text.PlainText
            }
        }
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            height: 14
            name: "chevron.down"
            width: 14
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
        onOpened: (contentItem as AccountMenuPanel).showFocus(root.menuReason)
        onClosed: {
            if (root.visible)
                root.forceActiveFocus(root.menuReason);
        }
        focus: true
        height: implicitContentHeight + 16
        implicitHeight: height
        margins: 8
        modal: false
        padding: 8
        width: 260
        x: root.width - width
        y: root.height + 8

        background: Rectangle {
            border.color: Theme.border
            border.width: 1
            color: Theme.card
            radius: 14

            CardShadow {}
        }
        contentItem: AccountMenuPanel {
            identity: root.model.identity
            onSignOut: {
                menu.close();
                root.model.signOut();
            }
        }
    }
}
