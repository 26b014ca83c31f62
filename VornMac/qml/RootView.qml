import QtQuick
import Vorn.Components
import Vorn.View

/// The window's content: the screen of the model's step, and the account menu.
Rectangle {
    id: root

    required property ScreenModel model

    color: Theme.background
    Component.onCompleted: model.start()

    // Keys that no control has handled.
    Keys.onPressed: event => {
        event.accepted = !event.isAutoRepeat && takesKey(event.key, event.modifiers);
    }

    WindowGrid {
        id: grid
        height: root.height
        width: root.width
    }
    WindowGround {
        anchors.fill: parent
        visible: root.model.isRestored && screens.visible
    }
    CrossFade {
        id: screens
        anchors.fill: parent
        focus: true
        objectName: "screens"
        properties: ({
                model: root.model
            })
        screen: root.model.isRestored ? root.screenOf(root.model.stepName) : ""
        visible: everything.status === Loader.Null
    }
    // Above the background that screens have while they fade.
    VornGlyph {
        x: grid.left - width / 12 // the drawing begins inside its box: this aligns it with the text below
        y: grid.spare + 39
    }
    // Covers the find screen, which keeps its focus for the way back.
    Loader {
        id: everything

        property int reason: Qt.PopupFocusReason

        function show() {
            const opener = root.Window.activeFocusItem as PushButton;
            reason = opener?.visualFocus ? Qt.TabFocusReason : Qt.PopupFocusReason;
            setSource("EverythingView.qml", {
                model: root.model
            });
            forceActiveFocus(reason);
        }
        function hide() {
            source = "";
            screens.forceActiveFocus(reason);
        }

        anchors.fill: parent
    }
    KeychainNote {
        anchors.centerIn: parent
        model: root.model
        visible: !root.model.isRestored
        width: 560
        onVisibleChanged: {
            if (!visible)
                screens.forceActiveFocus();
        }
    }
    // Created when a user first signs in.
    Loader {
        id: account

        readonly property bool isNeeded: root.model.isSignedIn

        x: grid.right - width
        y: grid.spare + 36
        onIsNeededChanged: {
            if (status === Loader.Null)
                setSource("AccountMenu.qml", {
                    model: root.model
                });
        }
    }
    Connections {
        target: account.item as AccountMenu
        // A session may end while the menu is open.
        function onVisibleChanged() {
            const menu = account.item as AccountMenu;
            if (menu.visible)
                return;
            menu.dismiss();
            screens.forceActiveFocus();
        }
    }

    // Created when it is first opened.
    Loader {
        id: about

        function show() {
            if (status === Loader.Null)
                setSource("AboutPanel.qml", {
                    parent: root
                });
            (item as AboutPanel).open();
        }
    }
    Connections {
        target: about.item as AboutPanel
        function onClosed() {
            screens.forceActiveFocus();
        }
    }
    Connections {
        target: root.model.everything
        function onIsOpenChanged() {
            if (root.model.everything.isOpen)
                everything.show();
            else
                everything.hide();
        }
    }
    Connections {
        target: root.model
        function onStepLeft() {
            screens.freeze();
        }
    }

    function takesKey(key: int, modifiers: int): bool {
        const isCommand = modifiers === Qt.ControlModifier; // ⌘ on a Mac
        if ((key === Qt.Key_Return || key === Qt.Key_Enter) && (modifiers & ~Qt.KeypadModifier) === Qt.NoModifier)
            goOn();
        else if ((key === Qt.Key_Escape && modifiers === Qt.NoModifier) || (isCommand && key === Qt.Key_BracketLeft))
            goBack();
        else if (isCommand && key === Qt.Key_R)
            tryAgain();
        else if (key === Qt.Key_F1)
            about.show();
        else
            return false;
        return true;
    }

    // Not called while a popup is open, since it receives the keys.
    function goOn() {
        if (model.everything.isOpen)
            return;
        if (model.isRestored)
            screens.current?.goOn();
        else
            tryAgain();
    }

    function goBack() {
        if (model.everything.isOpen)
            model.everything.close();
        else
            screens.current?.goBack();
    }

    function tryAgain() {
        if (model.everything.isOpen)
            return;
        if (model.isRestored)
            screens.current?.tryAgain();
        else if (model.keychain.retry.length > 0)
            model.start();
    }

    function screenOf(step: string): url {
        return Qt.resolvedUrl(step.charAt(0).toUpperCase() + step.slice(1) + "Screen.qml");
    }
}
