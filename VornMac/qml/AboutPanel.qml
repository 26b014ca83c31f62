import QtQuick
import QtQuick.Templates as T
import Vorn.Components
import Vorn.System
import Vorn.View

/// The application's name and version, and links to more.
T.Popup {
    id: root

    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
    focus: true
    height: implicitContentHeight + topPadding + bottomPadding
    implicitHeight: height
    modal: true
    // A key opens the panel, so its focus must be visible: Qt would give the focus in a popup a reason of its own.
    onOpened: (parent.Window.activeFocusItem as PushButton).focusReason = Qt.TabFocusReason
    T.Overlay.modal: Rectangle {
        color: Theme.scrim
    }
    padding: 28
    width: 280
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)

    background: Rectangle {
        border.color: Theme.border
        border.width: 1
        color: Theme.card
        radius: Theme.cardRadius

        CardShadow {}
    }
    contentItem: Column {
        spacing: 6
        Accessible.role: Accessible.Dialog
        Accessible.name: Labels.about

        VornGlyph {
            anchors.horizontalCenter: parent.horizontalCenter
            height: 76
            width: 76
        }
        Words {
            font.family: Theme.fonts.title.family
            font.pixelSize: Theme.fonts.title.pixelSize * 0.7
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            text: Labels.windowTitle
            width: parent.width
        }
        Words {
            bottomPadding: 8
            color: Theme.secondary
            font: Theme.fonts.caption
            horizontalAlignment: Text.AlignHCenter
            text: Labels.version
            width: parent.width
        }
        QuietLinkStyle {
            anchors.horizontalCenter: parent.horizontalCenter
            focus: true
            label: Labels.help
            onClicked: Qt.openUrlExternally(Labels.helpAddress)
        }
        QuietLinkStyle {
            anchors.horizontalCenter: parent.horizontalCenter
            label: Labels.privacy
            onClicked: Qt.openUrlExternally(Labels.privacyAddress)
        }
        QuietLinkStyle {
            anchors.horizontalCenter: parent.horizontalCenter
            label: Labels.notices
            onClicked: Qt.openUrlExternally(ThisApplication.notices)
        }
    }
}
