import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "NumberedStep"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        NumberedStep {
            number: 2
            text: "Turn it on."
            width: 300
        }
    }

    function texts(item) {
        return Array.from(item.children).reduce((all, child) => all.concat(child.visible && child.text !== undefined ? [child.text] : [], child.visible ? texts(child) : []), []);
    }

    function test_showsItsNumberUntilItIsDone() {
        const step = createTemporaryObject(component, test);
        verify(texts(step).includes("2"));
        verify(texts(step).includes("Turn it on."));
        step.done = true;
        verify(!texts(step).includes("2"));
        verify(texts(step).includes("Turn it on."));
    }
    function test_speaksOnce() {
        const step = createTemporaryObject(component, test);
        compare(step.Accessible.role, Accessible.ListItem);
        compare(step.Accessible.name, "2. Turn it on.");
        compare(step.Accessible.description, "");
        step.standing = "Done";
        compare(step.Accessible.description, "Done");
    }
    function test_fillsItsDiscWhenItIsNext() {
        const step = createTemporaryObject(component, test);
        const disc = step.children[0];
        verify(Qt.colorEqual(disc.color, Theme.pill));
        step.isNext = true;
        verify(Qt.colorEqual(disc.color, Theme.primaryFill));
        verify(Qt.colorEqual(disc.children[0].color, Theme.primaryText));
        verify(texts(step).includes("2"));
    }
}
