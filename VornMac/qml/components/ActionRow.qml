import QtQuick

/// What leads on from a screen, and back where there is a way back. Without a `backTitle` there is none.
Row {
    id: root

    property string backTitle: ""
    required property string primaryTitle
    property bool primaryEnabled: true

    signal back
    signal primary

    spacing: 12

    PrimaryButtonStyle {
        enabled: root.primaryEnabled
        label: root.primaryTitle
        onClicked: root.primary()
    }
    BackButtonStyle {
        label: root.backTitle
        visible: root.backTitle.length > 0
        onClicked: root.back()
    }
}
