import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// One application of the drawn list, with its switch. Without a symbol it is Vorn. It can be dragged where it stands for
/// a file.
Item {
    id: root

    required property string name
    property string symbol: ""
    property bool isOn: false
    property bool pulses: false
    property var dragged: null // its data, by MIME type

    readonly property bool isSeen: visible && Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized
    readonly property bool isPulsing: pulses && !isOn && isSeen && Theme.motion(1) > 0

    implicitHeight: Math.max(52, label.implicitHeight + 24)
    Accessible.role: Accessible.StaticText
    Accessible.name: Labels.switchText(name, isOn)

    Drag.active: dragging.active
    Drag.dragType: Drag.Automatic
    Drag.mimeData: root.dragged ?? {}
    Drag.supportedActions: Qt.CopyAction

    DragHandler {
        id: dragging
        enabled: root.dragged !== null
        target: null
    }
    HoverHandler {
        cursorShape: Qt.OpenHandCursor
        enabled: dragging.enabled
        onHoveredChanged: {
            if (hovered)
                icon.grabToImage(picture => root.Drag.imageSource = picture.url);
        }
    }
    Rectangle {
        id: glow
        anchors.fill: parent
        anchors.margins: 4
        color: Theme.focusRing
        opacity: 0
        radius: 9

        SequentialAnimation {
            loops: Animation.Infinite
            running: root.isPulsing
            onStopped: glow.opacity = 0

            NumberAnimation {
                duration: Theme.pulse
                easing.type: Easing.InOutSine
                property: "opacity"
                target: glow
                to: 0.16
            }
            NumberAnimation {
                duration: Theme.pulse
                easing.type: Easing.InOutSine
                property: "opacity"
                target: glow
                to: 0
            }
        }
    }
    VornGlyph {
        id: icon
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
        anchors.verticalCenterOffset: belowLetters / 2
        text: root.name
    }
    Rectangle {
        id: knobTrack
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        color: root.isOn ? Theme.switchOn : Theme.switchOff
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
    }
}
