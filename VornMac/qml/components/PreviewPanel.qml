import QtQuick

/// The content of the panel beside a form, with a caption at the bottom. The panel itself is drawn by the window and
/// stays still while its content changes.
Item {
    id: root

    required property string caption
    default property alias content: area.data

    readonly property real captionRoom: caption.length > 0 ? words.implicitHeight + 18 : 0

    implicitWidth: Theme.panelWidth

    Item {
        id: area
        anchors.bottomMargin: Theme.panelPadding + root.captionRoom
        anchors.fill: parent
        anchors.margins: Theme.panelPadding
    }
    Words {
        id: words
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        color: Theme.secondary
        font: Theme.fonts.caption
        horizontalAlignment: Text.AlignHCenter
        text: root.caption
    }
}
