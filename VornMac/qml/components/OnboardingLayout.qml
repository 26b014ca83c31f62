import QtQuick

/// A form of readable width beside a preview, centred in the window. The step dots, the title and the actions stay in
/// place whatever the form holds; a form that is too tall for the room between them scrolls.
FocusScope {
    id: root

    required property int step // from 0
    required property int totalSteps
    required property string position // of the step, for a screen reader
    required property string title
    required property string subtitle
    property alias backTitle: actions.backTitle
    property alias otherTitle: actions.otherTitle
    property alias primaryTitle: actions.primaryTitle
    property alias primaryEnabled: actions.primaryEnabled
    property alias primaryIsQuiet: actions.primaryIsQuiet
    default property alias form: body.form
    property alias formGap: body.widestGap
    property alias preview: area.data

    /// Whether Return triggers the primary action only while its button has the focus, not anywhere on the screen.
    property bool primaryIgnoresReturn: false

    signal back
    signal other
    signal primary

    readonly property Item focused: Window.activeFocusItem
    onFocusedChanged: body.reveal(focused)

    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown)
            event.accepted = body.turnPage(event.key === Qt.Key_PageDown);
    }

    WindowGrid {
        id: grid
        height: root.height
        width: root.width
    }
    StepDots {
        current: root.step
        position: root.position
        total: root.totalSteps
        x: grid.left
        y: grid.top + 16
    }
    TwoToneTitle {
        id: heading
        primary: root.title
        secondary: root.subtitle
        width: grid.formWidth
        x: grid.left
        y: grid.top + 44
    }
    ScrollingForm {
        id: body
        anchors.bottom: actions.top
        anchors.bottomMargin: Theme.wideGap
        anchors.top: heading.bottom
        anchors.topMargin: Theme.wideGap
        width: grid.formWidth
        x: grid.left
    }
    ActionRow {
        id: actions
        primaryTitle: ""
        width: grid.formWidth
        x: grid.left
        y: grid.bottom - height
        onBack: root.back()
        onOther: root.other()
        onPrimary: root.primary()
    }
    Item {
        id: area
        height: grid.bottom - grid.top
        width: Theme.panelWidth
        x: grid.right - width
        y: grid.top
    }
}
