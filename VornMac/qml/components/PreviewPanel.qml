import QtQuick

/// What lies in the panel beside a form, with a caption at its foot. The panel itself belongs to the window: it stands
/// still while what is in it changes.
Item {
    id: root

    required property string caption
    /// Whether the caption heads the panel, rather than standing at its foot.
    property bool isHeading: false
    default property alias content: area.data

    readonly property real captionRoom: caption.length > 0 ? words.implicitHeight + 18 : 0

    implicitWidth: Theme.panelWidth

    Item {
        id: area
        anchors.bottomMargin: Theme.panelPadding + (root.isHeading ? 0 : root.captionRoom)
        anchors.fill: parent
        anchors.margins: Theme.panelPadding
        anchors.topMargin: Theme.panelPadding + (root.isHeading ? root.captionRoom : 0)
    }
    Words {
        id: words
        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        color: Theme.secondary
        font: root.isHeading ? Theme.fonts.label : Theme.fonts.caption
        y: root.isHeading ? Theme.panelPadding : root.height - Theme.panelPadding - implicitHeight
        horizontalAlignment: Text.AlignHCenter
        text: root.caption
    }
}
