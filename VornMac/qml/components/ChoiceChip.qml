import QtQuick
import QtQuick.Templates as T
import Vorn.Drawing

/// A check box with text. The frame around it is drawn by the `ChoiceCard`.
T.AbstractButton {
    id: root

    required property string title
    property bool isOn: false

    readonly property real cornerRadius: Theme.controlRadius - 4

    /// The user ticked the box, or cleared it.
    signal chosen(isOn: bool)

    function flip() {
        if (enabled)
            root.chosen(!root.isOn);
    }

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Math.max(44, implicitContentHeight + 16)
    leftPadding: 14
    rightPadding: 14
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    checkable: true // makes it a check box to screen readers; Qt's own CheckBox leaks while one is active
    checked: isOn
    // The owner decides what is chosen: reverts the check mark that the click has set.
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
        spacing: 12

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            border.color: !root.enabled ? Theme.disabledText : root.isOn ? Theme.ink : Theme.tertiary
            border.width: 1.5
            color: root.isOn && root.enabled ? Theme.primaryFill : "transparent"
            height: 18
            radius: 5
            width: 18

            Symbol {
                anchors.centerIn: parent
                color: root.enabled ? Theme.primaryText : Theme.disabledText
                height: 13
                name: "checkmark"
                visible: root.isOn
                width: 13
            }
        }
        ButtonText {
            anchors.verticalCenter: parent.verticalCenter
            color: root.enabled ? Theme.ink : Theme.disabledText
            font: Theme.fonts.bodyMedium
            horizontalAlignment: Text.AlignLeft
            text: root.title
        }
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: 4
            color: Theme.pill
            radius: root.cornerRadius
            visible: root.hovered && root.enabled
        }
    }

    // Inside the box: around it, the ring would overlap the neighbouring boxes.
    FocusRing {
        anchors.margins: 3
        cornerRadius: root.cornerRadius - 4
        shown: root.visualFocus
    }
}
