import QtQuick

/// The panel beside a form: what is shown lies in it, with a caption at its foot.
Rectangle {
    id: root

    required property string caption
    default property alias content: area.data

    color: Theme.panel
    implicitWidth: Theme.panelWidth
    radius: Theme.panelRadius

    Item {
        id: area
        anchors.bottom: foot.top
        anchors.bottomMargin: foot.text.length > 0 ? 18 : 0
        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        anchors.top: parent.top
    }
    Words {
        id: foot
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.margins: Theme.panelPadding
        anchors.right: parent.right
        color: Theme.secondary
        font: Theme.fonts.caption
        height: text.length > 0 ? implicitHeight : 0
        horizontalAlignment: Text.AlignHCenter
        text: root.caption
    }
}
