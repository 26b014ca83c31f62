import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// One application of the drawn list, with its switch. Without a symbol it is Vorn.
Item {
    id: root

    required property string name
    property string symbol: ""
    property bool isOn: false
    property bool hasDivider: true

    implicitHeight: Math.max(56, label.implicitHeight + 24)
    Accessible.role: Accessible.StaticText
    Accessible.name: Labels.switchText(name, isOn)

    VornGlyph {
        anchors.verticalCenter: parent.verticalCenter
        height: 32
        visible: root.symbol.length === 0
        width: 32
        x: 12
    }
    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        border.color: Theme.border
        border.width: 1
        color: Theme.pill
        height: 28
        radius: 8
        visible: root.symbol.length > 0
        width: 28
        x: 14

        Symbol {
            anchors.centerIn: parent
            color: Theme.secondary
            height: 18
            name: root.symbol
            width: 18
        }
    }
    Words {
        id: label
        Accessible.ignored: true
        anchors.left: parent.left
        anchors.leftMargin: 56
        anchors.right: knobTrack.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        text: root.name
    }
    Rectangle {
        id: knobTrack
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        color: root.isOn ? Theme.success : Theme.tertiary
        height: 22
        radius: height / 2
        width: 38

        Behavior on color {
            ColorAnimation {
                duration: Theme.quick
            }
        }

        Rectangle {
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.plate
            height: 18
            radius: 9
            width: 18
            x: root.isOn ? parent.width - width - 2 : 2

            Behavior on x {
                NumberAnimation {
                    duration: Theme.quick
                    easing.type: Easing.InOutQuad
                }
            }
        }
    }
    Rectangle {
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.leftMargin: 56
        anchors.right: parent.right
        color: Theme.divider
        height: 1
        visible: root.hasDivider
    }
}
