import QtQuick
import Vorn.Drawing

/// A field for the words to search for. Escape clears it.
FocusScope {
    id: root

    required property string label
    required property string clearLabel
    property alias text: input.text

    /// The user wants to go to the results.
    signal finished

    implicitHeight: Math.max(Theme.controlHeight, Math.ceil(input.implicitHeight) + 16)

    Rectangle {
        anchors.fill: parent
        border.color: Theme.border
        border.width: 1
        color: Theme.card
        radius: Theme.controlRadius
    }
    Symbol {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        height: 18
        name: "magnifyingglass"
        width: 18
        x: 12
    }
    Words {
        Accessible.ignored: true
        anchors.left: input.left
        anchors.right: input.right
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondary
        elide: Text.ElideRight
        text: root.label
        visible: input.text.length === 0
        wrapMode: Text.NoWrap
    }
    TextInput {
        id: input
        Accessible.name: root.label
        Accessible.role: Accessible.EditableText
        Accessible.searchEdit: true
        activeFocusOnTab: true
        anchors.left: parent.left
        anchors.leftMargin: 40
        anchors.right: clearButton.left
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        clip: true
        color: Theme.ink
        focus: true
        font: Theme.fonts.body
        maximumLength: 1000
        selectByMouse: true
        selectedTextColor: Theme.outgoingInk
        selectionColor: Theme.outgoingBubble

        Keys.onDownPressed: root.finished()
        Keys.onReturnPressed: root.finished()
        Keys.onEnterPressed: root.finished()
        Keys.onEscapePressed: event => {
            event.accepted = text.length > 0;
            text = "";
        }
    }
    PushButton {
        id: clearButton
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        cornerRadius: 8
        height: 32
        label: root.clearLabel
        leftPadding: 7
        rightPadding: 7
        visible: input.text.length > 0
        width: 32
        onClicked: {
            input.clear();
            input.forceActiveFocus();
        }

        contentItem: Symbol {
            color: clearButton.hovered ? Theme.secondary : Theme.tertiary
            height: 18
            name: "xmark.circle.fill"
            width: 18
        }
    }
    FocusRing {
        shown: input.activeFocus
    }
}
