import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "ChoiceChip"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        ChoiceChip {
            title: "Agree & go"
        }
    }
    SignalSpy {
        id: chosen
        signalName: "chosen"
    }

    function make(properties) {
        const chip = createTemporaryObject(component, test, properties);
        chosen.target = chip;
        chosen.clear();
        return chip;
    }

    function test_asksForTheOtherStateAndWaitsForIt() {
        const chip = make({ isOn: false });
        mouseClick(chip);
        compare(chosen.count, 1);
        compare(chosen.signalArguments[0][0], true);
        compare(chip.isOn, false);
        chip.isOn = true;
        mouseClick(chip);
        compare(chosen.signalArguments[1][0], false);
    }
    function test_isChosenByKeys_data() {
        return [{ tag: "space", key: Qt.Key_Space }, { tag: "return", key: Qt.Key_Return }, { tag: "enter", key: Qt.Key_Enter }];
    }
    function test_isChosenByKeys(row) {
        const chip = make({});
        chip.forceActiveFocus();
        keyClick(row.key);
        compare(chosen.count, 1);
    }
    function test_tellsReadersItsState() {
        const chip = make({ isOn: true });
        compare(chip.Accessible.role, Accessible.CheckBox);
        compare(chip.Accessible.name, "Agree & go");
        verify(chip.checked);
        chip.isOn = false;
        verify(!chip.checked);
    }
    function test_canBeOff() {
        const chip = make({ enabled: false });
        mouseClick(chip);
        chip.flip();
        compare(chosen.count, 0);
        verify(!chip.Accessible.focusable);
    }
    function test_isHighEnoughToHit() {
        verify(make({}).height >= 44);
    }
    function test_looksOtherThanOneThatIsOff() {
        const box = chip => chip.contentItem.children[0];
        const chosen = make({ isOn: true });
        const off = make({ isOn: true, enabled: false });
        compare(box(chosen).color, Theme.primaryFill);
        verify(box(off).color !== Theme.primaryFill);
        verify(box(off).border.color !== box(chosen).border.color);
    }
    Component {
        id: card
        ChoiceCard {
            width: 300

            ChoiceChip {
                title: "One"
                width: parent.width
            }
            ChoiceChip {
                title: "Two"
                width: parent.width
            }
        }
    }
    function test_saysOnACardWhenAllAreMade() {
        const root = createTemporaryObject(card, test);
        compare(root.implicitHeight, 44 + 1 + 44);
        compare(root.border.color, Theme.border);
        root.chips[0].isOn = true;
        compare(root.border.color, Theme.border);
        root.chips[1].isOn = true;
        compare(root.border.color, Theme.ink);
        verify(root.border.width > 1);
    }
}
