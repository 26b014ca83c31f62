import QtQuick

/// The action buttons: the primary one at the right end, the other one beside it, and Back at the left end. A button
/// without a title is hidden.
Item {
    id: root

    property string backTitle: ""
    property string otherTitle: ""
    required property string primaryTitle
    property bool primaryEnabled: true
    /// Draws the primary button like the others, for when waiting is better than pressing it.
    property bool primaryIsQuiet: false

    signal back
    signal other
    signal primary

    implicitHeight: Theme.controlHeight
    implicitWidth: backButton.implicitWidth + 12 + others.implicitWidth

    BackButtonStyle {
        id: backButton
        label: root.backTitle
        visible: root.backTitle.length > 0
        x: -leftPadding // aligns its text, not its frame
        onClicked: root.back()
    }
    Row {
        id: others
        anchors.right: parent.right
        spacing: 12

        OutlineButtonStyle {
            label: root.otherTitle
            visible: root.otherTitle.length > 0
            onClicked: root.other()
        }
        PrimaryButtonStyle {
            enabled: root.primaryEnabled
            isQuiet: root.primaryIsQuiet
            label: root.primaryTitle
            visible: root.primaryTitle.length > 0
            onClicked: root.primary()
        }
    }
}
