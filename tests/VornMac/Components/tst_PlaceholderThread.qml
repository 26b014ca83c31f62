import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "PlaceholderThread"
    when: windowShown
    width: 600
    height: 600
    visible: true

    Component {
        id: component
        PlaceholderThread {
            height: 500
            width: 388
        }
    }
    Component {
        id: window
        Window {
            property alias thread: thread

            height: 500
            visible: true
            width: 388

            PlaceholderThread {
                id: thread
                anchors.fill: parent
            }
        }
    }

    function cleanup() {
        looks.setReducesMotion(false);
    }
    function bars(item) {
        return Array.from(item.children).reduce((all, child) => all.concat(child.radius === 4 ? [child] : [], bars(child)), []);
    }

    function test_hasBubblesOfSeveralWidths() {
        const root = createTemporaryObject(component, test);
        verify(new Set(bars(root).map(bar => bar.width)).size >= 4);
        for (const bar of bars(root)) {
            const frame = bar.mapToItem(root, 0, 0, bar.width, bar.height);
            verify(frame.x >= 0 && frame.x + frame.width <= 388);
            verify(frame.y >= 0 && frame.y + frame.height <= 500);
        }
    }
    function test_hasALightPassOverIt() {
        const root = createTemporaryObject(component, test);
        verify(root.shimmers);
        const before = root.brightness(1);
        tryVerify(() => root.brightness(1) !== before, 2000);
        verify(root.brightness(0) !== root.brightness(2));
    }
    function test_standsStillWhereItIsHiddenOrMotionIsNotWanted() {
        const root = createTemporaryObject(component, test);
        root.visible = false;
        verify(!root.shimmers);
        root.visible = true;
        verify(root.shimmers);
        looks.setReducesMotion(true);
        verify(!root.shimmers);
        const light = root.light;
        wait(250); // longer than two steps
        compare(root.light, light);
        compare(root.brightness(0), root.brightness(2));
    }
    function test_standsStillWhileItsWindowIsHidden() {
        const shown = createTemporaryObject(window, test);
        tryVerify(() => shown.thread.shimmers, 2000);
        shown.hide();
        verify(!shown.thread.shimmers);
        shown.showMinimized();
        tryVerify(() => !shown.thread.shimmers, 2000);
        shown.showNormal();
        tryVerify(() => shown.thread.shimmers, 2000);
    }
    function test_saysNothing() {
        verify(createTemporaryObject(component, test).Accessible.ignored);
    }
}
