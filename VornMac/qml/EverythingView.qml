import QtQuick
import Vorn.Components
import Vorn.System
import Vorn.View

/// Covers the find screen with everything that would be uploaded, message by message, beside what is left out.
FocusScope {
    id: root

    required property ScreenModel model

    readonly property Everything page: model.everything
    readonly property int asideWidth: 320
    readonly property int gap: 40

    focus: true

    // RootView handles the keys that are not accepted here.
    Keys.onShortcutOverride: event => event.accepted = event.key === Qt.Key_Escape
    Keys.onEscapePressed: page.close()
    Keys.onPressed: event => {
        const pages = event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown;
        event.accepted = pages ? list.moves(event.key) : event.matches(StandardKey.Find);
        if (event.accepted && !pages)
            search.forceActiveFocus(Qt.ShortcutFocusReason);
    }

    WindowGrid {
        id: grid
        height: root.height
        width: root.width
    }
    TwoToneTitle {
        id: heading
        primary: root.page.title
        secondary: root.page.subtitle
        width: root.asideWidth
        x: grid.left
        y: grid.top + 44
    }
    ScrollingForm {
        id: body
        anchors.bottom: status.visible ? status.top : actions.top
        anchors.bottomMargin: Theme.wideGap
        anchors.top: heading.bottom
        anchors.topMargin: Theme.wideGap
        width: root.asideWidth
        x: grid.left

        Section {
            title: root.page.leftOutHeading
            width: parent.width

            Repeater {
                model: root.page.leftOutLabels.length

                LeftOutRow {
                    required property int index

                    // Outer ids count as unqualified: Qt 6.4 has no `pragma ComponentBehavior: Bound`.
                    // qmllint disable unqualified
                    count: root.page.leftOutCounts[index] ?? ""
                    label: root.page.leftOutLabels[index] ?? ""
                    reason: root.page.leftOutReasons[index] ?? ""
                    // qmllint enable unqualified
                    width: parent ? parent.width : 0 // null while the page is being destroyed
                }
            }
            Words {
                color: Theme.secondary
                font: Theme.fonts.caption
                text: root.page.leftOutNote
                width: parent.width
            }
        }
        Section {
            title: root.page.besidesHeading
            width: parent.width

            Repeater {
                model: root.page.besides

                Words {
                    required property string modelData

                    color: Theme.secondary
                    font: Theme.fonts.caption
                    text: modelData
                    width: parent ? parent.width : 0 // null while the page is being destroyed
                }
            }
        }
    }
    StatusLine {
        id: status
        anchors.bottom: actions.top
        anchors.bottomMargin: Theme.wideGap
        text: root.page.copyStatus.text
        tone: root.page.copyStatus.tone
        visible: text.length > 0
        width: root.asideWidth
        x: grid.left
    }
    ActionRow {
        id: actions
        backTitle: root.page.backLabel
        primaryEnabled: !root.page.isSaving
        primaryIsQuiet: true
        primaryTitle: root.page.saveLabel
        width: root.asideWidth
        x: grid.left
        y: grid.bottom - height
        onBack: root.page.close()
        onPrimary: saving.ask()
    }
    Rectangle {
        border.color: Theme.border
        border.width: 1
        color: Theme.panel
        height: grid.bottom - grid.top
        radius: Theme.panelRadius
        width: grid.right - x
        x: grid.left + root.asideWidth + root.gap
        y: grid.top

        SearchField {
            id: search
            anchors.left: parent.left
            anchors.margins: 16
            anchors.right: listed.left
            anchors.top: parent.top
            clearLabel: root.page.clearLabel
            focus: true
            label: root.page.searchLabel
            text: root.page.words
            onFinished: list.forceActiveFocus(Qt.ShortcutFocusReason)
            onTextChanged: root.page.words = text
        }
        Words {
            id: listed
            anchors.right: parent.right
            anchors.rightMargin: 24
            anchors.verticalCenter: search.verticalCenter
            color: Theme.secondary
            font: Theme.fonts.caption
            text: root.page.listed
            wrapMode: Text.NoWrap
        }
        EverythingMessages {
            id: list
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 12
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.top: search.bottom
            anchors.topMargin: 8
            page: root.page
        }
        EdgeFade {
            anchors.left: list.left
            anchors.right: list.right
            anchors.rightMargin: 16
            anchors.top: list.top
            opacity: list.atYBeginning ? 0 : 1
            surface: Theme.panel
        }
        EdgeFade {
            anchors.bottom: list.bottom
            anchors.left: list.left
            anchors.right: list.right
            anchors.rightMargin: 16
            isAtBottom: true
            opacity: list.atYEnd ? 0 : 1
            surface: Theme.panel
        }
        Words {
            anchors.centerIn: list
            color: Theme.secondary
            horizontalAlignment: Text.AlignHCenter
            text: root.page.nothingFound
            width: list.width - 2 * root.gap
        }
    }

    Connections {
        target: root.page
        function onListedChanged() {
            if (root.page.isComplete)
                Announcer.announce(listed, listed.text);
        }
    }
    Loader {
        id: saving

        function ask() {
            if (status !== Loader.Ready)
                setSource("SaveCopyDialog.qml", {
                    page: root.page
                });
            (item as SaveCopyDialog)?.open();
        }
    }
}
