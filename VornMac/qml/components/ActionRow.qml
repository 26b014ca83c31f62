import QtQuick

/// What to do next, at the right end, and the way back at the left. A button without a title is not there. Each keeps its
/// place, whichever others there are.
Item {
    id: root

    property string backTitle: ""
    property string otherTitle: ""
    required property string primaryTitle
    property bool primaryEnabled: true
    /// Whether there is something better to do than what leads on: to wait.
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
        x: -leftPadding // its words and not its frame stand in line
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
