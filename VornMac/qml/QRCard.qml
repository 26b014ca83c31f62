import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The QR code on its plate in a viewfinder, above the time until the next code. A symbol replaces a code that the
/// phone has read; a placeholder is shown while the code is awaited.
Item {
    id: root

    required property bool expires // whether `timeLeft` is known
    required property string payload // empty without a code
    required property string timeLeft
    required property bool isScanned
    required property bool hasFailed

    readonly property bool hasCode: payload.length > 0
    readonly property bool countsDown: hasCode && expires && !isScanned
    readonly property bool isAwaited: !hasCode && !isScanned && !hasFailed

    implicitHeight: finder.height + 24 + countdown.height
    implicitWidth: finder.width

    ViewfinderCorners {
        id: finder
        height: width
        width: plate.width + 2 * 18
    }
    Rectangle {
        id: plate

        readonly property bool hasPlate: root.hasCode || root.isScanned

        anchors.centerIn: finder
        border.color: Theme.border
        border.width: hasPlate ? 0 : 1
        color: hasPlate ? Theme.plate : Theme.card
        height: width
        radius: 20
        width: 316

        CardShadow {}
        QRCodeImage {
            anchors.fill: parent
            payload: root.payload
            visible: root.hasCode && !root.isScanned
        }
        CodeShape {
            anchors.centerIn: parent
            color: Theme.ink
            height: width
            width: parent.width - parent.width % modulesAcross
            opacity: 0.12
            visible: root.isAwaited
            Accessible.ignored: true
        }
        Rectangle {
            anchors.centerIn: parent
            color: parent.color
            height: width
            radius: width / 2
            visible: root.isAwaited
            width: 64

            Spinner {
                anchors.centerIn: parent
                size: 28
            }
        }
        VornGlyph {
            anchors.centerIn: parent
            height: 56
            opacity: 0.35
            visible: root.hasFailed
            width: 56
        }
        Column {
            anchors.centerIn: parent
            spacing: 16
            visible: root.isScanned

            Symbol {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Theme.plateInk
                height: 96
                name: "iphone.gen3.radiowaves.left.and.right"
                width: 96
                Accessible.ignored: true
            }
            Words {
                color: Theme.plateInk
                font: Theme.fonts.caption
                text: Labels.codeIsRead
            }
        }
    }
    Row {
        id: countdown
        anchors.horizontalCenter: finder.horizontalCenter
        anchors.top: finder.bottom
        anchors.topMargin: 24
        // Takes its space even without a code, so that nothing jumps when one appears.
        opacity: root.countsDown ? 1 : 0
        Accessible.role: Accessible.StaticText
        Accessible.name: root.countsDown ? label.text + time.text : ""
        Accessible.ignored: !root.countsDown

        Words {
            id: label
            Accessible.ignored: true
            color: Theme.secondary
            font: Theme.fonts.caption
            text: Labels.codeLifetime
            textFormat: Text.PlainText
        }
        DigitText {
            id: time
            Accessible.ignored: true
            color: Theme.secondary
            font: Theme.fonts.caption
            text: root.timeLeft
        }
    }
}
