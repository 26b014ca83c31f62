import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "MessageBubble"
    when: windowShown
    width: 600
    height: 400
    visible: true
    // What is drawn of a bubble.
    function shape(root) {
        return Array.from(root.children).find(child => child.tail !== undefined);
    }
    function words(root) {
        return Array.from(shape(root).children).find(child => child.lineCount !== undefined);
    }
    function bars(root) {
        return Array.from(shape(root).children).find(child => child.lineCount === undefined && child.spacing !== undefined);
    }

    Component {
        id: component
        MessageBubble {
            fromMe: false
            spoken: "Nimbrel: Hello"
            text: "Hello"
            width: 400
        }
    }

    function test_standsOnTheSideOfWhoWroteIt() {
        const mine = createTemporaryObject(component, test, { fromMe: true });
        compare(shape(mine).x + shape(mine).width, 400);
        compare(shape(mine).color, Theme.outgoingBubble);
        const theirs = createTemporaryObject(component, test, { fromMe: false });
        compare(shape(theirs).x, 0);
        compare(shape(theirs).color, Theme.incomingBubble);
    }
    function test_hasATailOnThatSideUnlessItHasNone() {
        const mine = shape(createTemporaryObject(component, test, { fromMe: true })).tail;
        const theirs = shape(createTemporaryObject(component, test, { fromMe: false })).tail;
        const none = shape(createTemporaryObject(component, test, { hasTail: false })).tail;
        verify(mine !== theirs);
        verify(mine !== none);
        verify(theirs !== none);
    }
    function test_showsBarsInsteadOfARedactedText() {
        const bubble = createTemporaryObject(component, test, { redacted: true });
        verify(!words(bubble).visible);
        verify(bars(bubble).visible);
        verify(bubble.Accessible.ignored);
        verify(bubble.height > 0);
        bubble.redacted = false;
        verify(words(bubble).visible);
        verify(!bars(bubble).visible);
        compare(words(bubble).text, "Hello");
    }
    function test_growsWithLongTextInItsWidth() {
        const brief = createTemporaryObject(component, test);
        const lengthy = createTemporaryObject(component, test, { text: "Hello ".repeat(40) });
        tryVerify(() => lengthy.height > 2 * brief.height);
        verify(shape(lengthy).width <= 0.8 * 400 + 1);
        verify(!words(lengthy).truncated);
    }
    function test_saysWhoSpeaks() {
        compare(createTemporaryObject(component, test).Accessible.name, "Nimbrel: Hello");
        compare(createTemporaryObject(component, test, { redacted: true }).Accessible.name, "");
    }
}
