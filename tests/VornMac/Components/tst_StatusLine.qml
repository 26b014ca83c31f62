import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "StatusLine"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        StatusLine {
            text: "How it stands"
            tone: StatusLine.Waiting
            width: 300
        }
    }

    function all(item) {
        return Array.from(item.children).reduce((found, child) => found.concat(child.visible ? [child].concat(all(child)) : []), []);
    }
    function spinner(line) {
        return all(line).find(item => item.isSpinning !== undefined) ?? null;
    }
    function symbol(line) {
        return all(line).find(item => item.name !== undefined && item.color !== undefined) ?? null;
    }

    function test_saysItsTone() {
        const line = createTemporaryObject(component, test, { spokenTone: "Error", text: "No." });
        compare(line.Accessible.name, "No.");
        compare(line.Accessible.description, "Error");
    }
    function test_showsItsTone_data() {
        return [{ tag: "good", tone: StatusLine.Good, name: "checkmark.circle.fill", color: Theme.success },
            { tag: "warning", tone: StatusLine.Warning, name: "exclamationmark.circle.fill", color: Theme.warning },
            { tag: "bad", tone: StatusLine.Bad, name: "xmark.circle.fill", color: Theme.bad }];
    }
    function test_showsItsTone(row) {
        const line = createTemporaryObject(component, test, { tone: row.tone });
        compare(symbol(line).name, row.name);
        compare(symbol(line).color, row.color);
        compare(spinner(line), null);
    }
    function test_spinsWhileItWaits() {
        const line = createTemporaryObject(component, test);
        verify(spinner(line));
        compare(symbol(line), null);
        line.tone = StatusLine.Good;
        compare(spinner(line), null);
    }
    function test_speaksOnce() {
        const line = createTemporaryObject(component, test);
        compare(line.Accessible.role, Accessible.StaticText);
        compare(line.Accessible.name, "How it stands");
    }
    function test_growsWithItsText() {
        const line = createTemporaryObject(component, test);
        const one = line.implicitHeight;
        line.text = "How it stands. ".repeat(20);
        tryVerify(() => line.implicitHeight > 3 * one);
    }
}
