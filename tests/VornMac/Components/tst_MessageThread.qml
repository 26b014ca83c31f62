import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "MessageThread"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        MessageThread {
            name: "Messages"
            surface: "#FFFFFF"
            width: 300
            height: 200
        }
    }

    function turns(count) {
        const list = createTemporaryQmlObject("import QtQml.Models; ListModel {}", test);
        for (let at = 0; at < count; ++at)
            list.append({ text: "Hello " + at, spoken: "You: Hello " + at, fromMe: true });
        return list;
    }
    function make(count) {
        const thread = createTemporaryObject(component, test, { turns: turns(count) });
        waitForRendering(thread);
        return thread;
    }
    function fades(thread) {
        return [false, true].map(isAtBottom => Array.from(thread.children).find(child => child.isAtBottom === isAtBottom));
    }

    function test_standsAtTheBottomWhereItFits() {
        const thread = make(2);
        verify(!thread.interactive);
        const column = Array.from(thread.contentItem.children).find(child => child.spacing !== undefined);
        compare(column.y + column.height, 200);
        compare(fades(thread).map(fade => fade.opacity), [0, 0]);
    }
    function test_fadesAtTheEdgesBehindWhichItGoesOn() {
        const thread = make(20);
        verify(thread.interactive);
        compare(thread.contentY, thread.contentHeight - 200);
        compare(fades(thread).map(fade => fade.opacity), [1, 0]);
        const picture = grabImage(thread);
        verify(picture.red(265, 0) > 240, "all but gone");
        verify(Array.from({ length: 40 }, (_, y) => picture.pixel(265, 100 + y)).some(pixel => Qt.colorEqual(pixel, Theme.outgoingBubble)), "as they are further down");
        thread.contentY = 0;
        compare(fades(thread).map(fade => fade.opacity), [0, 1]);
        thread.contentY = 16;
        compare(fades(thread)[0].opacity, 0.5);
    }
    function test_scrollsByKey() {
        const thread = make(20);
        thread.forceActiveFocus(Qt.TabFocusReason);
        const end = thread.contentY;
        keyClick(Qt.Key_Up);
        compare(thread.contentY, end - 40);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_Down);
        compare(thread.contentY, end);
    }
}
