import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "Buttons"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: primary
        PrimaryButtonStyle {}
    }
    Component {
        id: outline
        OutlineButtonStyle {}
    }
    Component {
        id: quiet
        QuietLinkStyle {}
    }
    Component {
        id: back
        BackButtonStyle {}
    }
    SignalSpy {
        id: clicked
        signalName: "clicked"
    }

    function styles() {
        return [{ tag: "primary", style: primary }, { tag: "outline", style: outline }, { tag: "quiet", style: quiet }, { tag: "back", style: back }];
    }
    function make(style, properties) {
        const button = createTemporaryObject(style, test, Object.assign({ label: "Quit & go" }, properties));
        clicked.target = button;
        clicked.clear();
        return button;
    }

    function test_isPressedInEveryWay_data() {
        return styles();
    }
    function test_isPressedInEveryWay(row) {
        const button = make(row.style, {});
        mouseClick(button);
        compare(clicked.count, 1);
        button.forceActiveFocus(Qt.TabFocusReason);
        for (const key of [Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter])
            keyClick(key);
        compare(clicked.count, 4);
        compare(button.Accessible.name, "Quit & go");
    }
    function test_showsTheKeyboardsFocus_data() {
        return styles();
    }
    function test_showsTheKeyboardsFocus(row) {
        const button = make(row.style, {});
        button.forceActiveFocus(Qt.MouseFocusReason);
        verify(!button.visualFocus);
        button.focus = false;
        button.forceActiveFocus(Qt.TabFocusReason);
        verify(button.visualFocus);
    }
    function test_quietLinkIsUnderlinedWhileItIsMeant() {
        const link = make(quiet, {});
        verify(!link.contentItem.font.underline);
        mouseMove(link);
        tryVerify(() => link.contentItem.font.underline);
        mouseMove(test, 599, 399);
        tryVerify(() => !link.contentItem.font.underline);
        link.forceActiveFocus(Qt.TabFocusReason);
        verify(link.contentItem.font.underline);
    }
    function test_doesNothingWhileItIsOff_data() {
        return styles();
    }
    function test_doesNothingWhileItIsOff(row) {
        const button = make(row.style, { enabled: false });
        mouseClick(button);
        button.press();
        button.forceActiveFocus();
        keyClick(Qt.Key_Return);
        compare(clicked.count, 0);
        verify(!button.activeFocus);
        verify(!button.Accessible.focusable);
    }
    function test_primaryShowsWhetherItIsOn() {
        for (const isDark of [false, true]) {
            looks.setDark(isDark);
            const button = make(primary, {});
            compare(button.background.color, Theme.primaryFill);
            compare(button.contentItem.color, Theme.primaryText);
            button.enabled = false;
            compare(button.background.color, Theme.disabledFill);
            compare(button.contentItem.color, Theme.disabledText);
        }
        looks.setDark(false);
    }
}
