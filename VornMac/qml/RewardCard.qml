import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// What the quest pays. Paid, it has a check mark; lost, it is struck through.
Item {
    id: root

    required property string amount
    property bool isPaid: false
    property bool isStruck: false

    implicitHeight: card.height
    Accessible.role: Accessible.StaticText
    Accessible.name: amount + ", " + caption.text

    SoftShadow {
        anchors.fill: card
        anchors.margins: -blur
        blur: 24
        color: Theme.shadow
        radius: card.radius
    }
    Rectangle {
        id: card
        color: Theme.card
        height: column.height + 64
        radius: 20
        width: parent.width

        Column {
            id: column
            anchors.centerIn: parent
            spacing: 10
            width: parent.width - 48

            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                height: 52
                width: 52

                VornGlyph {
                    anchors.fill: parent
                    opacity: root.isStruck ? 0.4 : 1
                }
                Rectangle {
                    color: Theme.card
                    height: 24
                    radius: 12
                    visible: root.isPaid
                    width: 24
                    x: parent.width - 14
                    y: parent.height - 14

                    Symbol {
                        anchors.centerIn: parent
                        color: Theme.success
                        height: 20
                        name: "checkmark.circle.fill"
                        width: 20
                    }
                }
            }
            Words {
                Accessible.ignored: true
                color: root.isStruck ? Theme.secondary : Theme.ink
                font.family: Theme.fonts.amount.family
                font.pixelSize: Theme.fonts.amount.pixelSize
                font.strikeout: root.isStruck
                font.weight: Theme.fonts.amount.weight
                fontSizeMode: Text.HorizontalFit
                horizontalAlignment: Text.AlignHCenter
                minimumPixelSize: 16
                text: root.amount
                width: parent.width
                wrapMode: Text.NoWrap
            }
            Words {
                id: caption
                Accessible.ignored: true
                color: Theme.secondary
                font: Theme.fonts.label
                horizontalAlignment: Text.AlignHCenter
                text: Labels.questName
                width: parent.width
            }
        }
    }
}
