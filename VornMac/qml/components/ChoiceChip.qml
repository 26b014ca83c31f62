import QtQuick
import QtQuick.Templates as T
import Vorn.Drawing

/// A choice that is made or not, with words that say what is chosen.
T.AbstractButton {
    id: root

    required property string title
    property bool isOn: false
    property string symbol: ""

    /// The user made the choice, or took it back.
    signal chosen(isOn: bool)

    function flip() {
        if (enabled)
            root.chosen(!root.isOn);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(36, implicitContentHeight + 16)
    leftPadding: 10
    rightPadding: 14
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    checkable: true // which makes it a check box to readers; Qt's own type for one leaks when they listen
    checked: isOn
    // Who uses it decides what is chosen: what the click made of the check mark does not stay.
    onClicked: {
        root.flip();
        root.checked = Qt.binding(() => root.isOn);
    }

    Keys.onReturnPressed: root.flip()
    Keys.onEnterPressed: root.flip()

    Accessible.role: Accessible.CheckBox
    Accessible.name: title
    Accessible.focusable: enabled
    Accessible.onPressAction: root.flip()
    Accessible.onToggleAction: root.flip()

    contentItem: Row {
        spacing: 10

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            border.color: root.isOn ? Theme.primaryFill : Theme.tertiary
            border.width: 1.5
            color: root.isOn ? Theme.primaryFill : "transparent"
            height: 18
            radius: 6
            width: 18

            Symbol {
                anchors.centerIn: parent
                color: Theme.primaryText
                height: 12
                name: "checkmark"
                visible: root.isOn
                width: 12
            }
        }
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.secondary
            height: 18
            name: root.symbol
            visible: root.symbol.length > 0
            width: 18
        }
        ButtonText {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.ink
            font: Theme.fonts.bodyMedium
            horizontalAlignment: Text.AlignLeft
            text: root.title
        }
    }
    background: Rectangle {
        border.color: root.isOn ? Theme.tertiary : Theme.border
        border.width: 1
        color: root.isOn || root.hovered ? Theme.pill : "transparent"
        radius: Theme.controlRadius
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }

    FocusRing {
        shown: root.visualFocus
    }
}
