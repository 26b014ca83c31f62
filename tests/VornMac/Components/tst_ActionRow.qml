import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "ActionRow"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        ActionRow {
            primaryTitle: "Go on"
            width: 480
        }
    }
    SignalSpy {
        id: primary
        signalName: "primary"
    }
    SignalSpy {
        id: back
        signalName: "back"
    }

    function make(properties) {
        const row = createTemporaryObject(component, test, properties);
        primary.target = row;
        back.target = row;
        primary.clear();
        back.clear();
        return row;
    }
    function buttons(item) {
        return Array.from(item.children).reduce((found, child) => found.concat(child.label !== undefined ? [child] : buttons(child)), []).filter(child => child.visible);
    }
    function button(row, text) {
        return buttons(row).find(child => child.label === text) ?? null;
    }
    function frameOf(row, text) {
        const found = button(row, text);
        return found.mapToItem(row, 0, 0, found.width, found.height);
    }

    function test_tellsWhichButtonIsPressed() {
        const row = make({ backTitle: "Back" });
        mouseClick(button(row, "Go on"));
        compare(primary.count, 1);
        compare(back.count, 0);
        mouseClick(button(row, "Back"));
        compare(primary.count, 1);
        compare(back.count, 1);
    }
    function test_hasNoWayBackWithoutATitle() {
        const row = make({});
        verify(button(row, "Go on"));
        compare(buttons(row).length, 1);
    }
    function test_hasTheWayBackAtTheLeftAndWhatLeadsOnAtTheRight() {
        const row = make({ backTitle: "Back", otherTitle: "Else", width: 480 });
        waitForRendering(row);
        compare(frameOf(row, "Back").x, -8); // its text begins at 0
        verify(frameOf(row, "Back").right < frameOf(row, "Else").left);
        verify(frameOf(row, "Else").right < frameOf(row, "Go on").left);
        compare(frameOf(row, "Go on").right, 480);
        row.otherTitle = "";
        row.backTitle = "";
        compare(buttons(row).length, 1);
        compare(frameOf(row, "Go on").right, 480);
    }
    function test_tellsOfTheThirdButton() {
        const row = make({ otherTitle: "Else" });
        const other = createTemporaryQmlObject("import QtTest; SignalSpy { signalName: 'other' }", test);
        other.target = row;
        mouseClick(button(row, "Else"));
        compare(other.count, 1);
        compare(primary.count, 0);
    }
    function test_isQuietWhereNothingHasToBeDone() {
        const row = make({ primaryIsQuiet: true });
        const loud = button(make({}), "Go on").background.color;
        verify(button(row, "Go on").background.color !== loud);
        row.primaryIsQuiet = false;
        compare(button(row, "Go on").background.color, loud);
    }
    function test_canBeOff() {
        const row = make({ primaryEnabled: false });
        const primaryButton = button(row, "Go on");
        verify(!primaryButton.enabled);
        mouseClick(primaryButton);
        primaryButton.press();
        compare(primary.count, 0);
        row.primaryEnabled = true;
        mouseClick(primaryButton);
        compare(primary.count, 1);
    }
}
