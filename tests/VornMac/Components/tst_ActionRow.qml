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
    function button(row, text) {
        return Array.from(row.children).find(child => child.label === text && child.visible) ?? null;
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
        compare(Array.from(row.children).filter(child => child.visible && child.label !== undefined).length, 1);
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
