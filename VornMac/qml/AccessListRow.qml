import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// One application in the drawn list, with its switch. A row without a symbol is Vorn's and shows Vorn's icon. A row
/// with `dragged` data can be dragged.
Item {
    id: root

    required property string name
    property string symbol: ""
    property bool isOn: false
    property bool pulses: false
    property var dragged: null // the data to drag, by MIME type; null if the row cannot be dragged

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

        property real phase: 0 // 0…1, repeating

        anchors.fill: parent
        anchors.margins: 4
        color: Theme.focusRing
        opacity: 0.08 * (1 - Math.cos(2 * Math.PI * phase))
        radius: 9

        // In steps: a slow glow looks the same, and redraws the window ten times a second instead of sixty.
        Timer {
            id: steps
            interval: 100
            repeat: true
            running: root.isPulsing
            onRunningChanged: glow.phase = 0
            onTriggered: glow.phase = (glow.phase + steps.interval / Theme.pulse) % 1
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
