import QtQuick
import Vorn.Components
import Vorn.Drawing
import Vorn.View

/// The quest's reward and its state, as a symbol and a text. A refused or stopped reward is muted.
Item {
    id: root

    enum Standing { Packing, Sending, NotSent, Checking, PersonChecking, Paid, Refused, Stopped }

    required property string heading
    required property string amount
    required property bool isAmount // false if `amount` is a text for an unknown amount
    required property string status
    required property int standing // a RewardCard.Standing

    // Animated by `RewardPanel` when the reward is paid.
    property string countedAmount: root.amount
    property real checkDrawn: 1 // 0…1
    property real checkOpacity: 1
    property real contentScale: 1

    readonly property font amountFont: !isAmount ? Theme.fonts.title : isRefused ? Theme.fonts.quietAmount : Theme.fonts.amount
    readonly property bool isPaid: standing === RewardCard.Paid
    readonly property bool isRefused: standing === RewardCard.Refused
    readonly property bool isStopped: standing === RewardCard.Stopped

    function symbolOf(standing: int): string {
        switch (standing) {
        case RewardCard.Packing:
            return "shippingbox";
        case RewardCard.Sending:
            return "arrow.up.circle.fill";
        case RewardCard.PersonChecking:
            return "person.fill";
        case RewardCard.Paid:
            return "checkmark.circle.fill";
        case RewardCard.NotSent:
        case RewardCard.Refused:
            return "xmark.circle.fill";
        case RewardCard.Stopped:
            return "stop.circle.fill";
        default:
            return ""; // a spinner
        }
    }

    implicitHeight: card.height
    Accessible.role: Accessible.StaticText
    Accessible.name: root.amount + ", " + caption.text
    Accessible.description: root.status

    Rectangle {
        id: card
        color: Theme.card
        height: column.height + 56
        radius: 20
        scale: root.contentScale
        width: parent.width
        border.color: Theme.border
        border.width: 1

        CardShadow {}
        Column {
            id: column
            anchors.centerIn: parent
            spacing: 20
            width: parent.width - 48

            Words {
                color: Theme.secondary
                font: Theme.fonts.label
                horizontalAlignment: Text.AlignHCenter
                text: root.heading
                width: parent.width
            }
            Item {
                anchors.horizontalCenter: parent.horizontalCenter
                height: 56
                width: 56

                VornGlyph {
                    anchors.fill: parent
                    opacity: root.isRefused ? 0.4 : root.isStopped ? 0.6 : 1
                    visible: !root.isPaid
                }
                CheckMark {
                    anchors.fill: parent
                    color: Theme.success
                    inkColor: Theme.outgoingInk
                    opacity: root.checkOpacity
                    progress: root.checkDrawn
                    visible: root.isPaid
                    Accessible.ignored: true
                }
            }
            Column {
                spacing: 4
                width: parent.width

                Item {
                    height: Math.ceil(amountRoom.height)
                    width: parent.width

                    FontMetrics {
                        id: amountRoom
                        font: Theme.fonts.amount
                    }
                    // While the amount counts up, it is left-aligned at its final place, so that the currency sign does
                    // not move.
                    Words {
                        id: figure
                        Accessible.ignored: true
                        anchors.verticalCenter: parent.verticalCenter
                        color: root.isRefused ? Theme.secondary : Theme.ink
                        font: root.amountFont
                        fontSizeMode: Text.HorizontalFit
                        lineHeight: 1
                        horizontalAlignment: root.countedAmount === root.amount ? Text.AlignHCenter : Text.AlignLeft
                        leftPadding: root.countedAmount === root.amount ? 0 : Math.max(0, (width - whole.advanceWidth) / 2)
                        minimumPixelSize: 16
                        opacity: root.isStopped ? 0.6 : 1
                        text: root.countedAmount
                        width: parent.width
                        wrapMode: Text.NoWrap
                    }
                    TextMetrics {
                        id: whole
                        font: root.amountFont
                        text: root.amount
                    }
                    Rectangle {
                        anchors.centerIn: parent
                        color: Theme.tertiary
                        height: 2
                        visible: root.isRefused
                        width: figure.contentWidth + 12
                    }
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
            Rectangle {
                anchors.horizontalCenter: parent.horizontalCenter
                color: Theme.pill
                height: statusWords.letterHeight + 16
                radius: height / 2
                width: statusRow.width + 24
                border.color: Theme.divider
                border.width: 1

                Row {
                    id: statusRow
                    anchors.centerIn: parent
                    spacing: 6

                    Item {
                        anchors.verticalCenter: parent.verticalCenter
                        height: 16
                        width: 16

                        Symbol {
                            anchors.fill: parent
                            color: root.isPaid ? Theme.success : Theme.secondary
                            name: root.symbolOf(root.standing)
                            visible: name.length > 0
                            Accessible.ignored: true
                        }
                        Spinner {
                            anchors.centerIn: parent
                            visible: root.standing === RewardCard.Checking
                        }
                    }
                    Words {
                        id: statusWords
                        Accessible.ignored: true
                        anchors.verticalCenter: parent.verticalCenter
                        font: Theme.fonts.label
                        lineHeight: 1
                        text: root.status
                    }
                }
            }
        }
    }
}
