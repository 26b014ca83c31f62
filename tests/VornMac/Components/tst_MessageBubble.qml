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
    // The drawn parts of a bubble.
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
    function test_isAsWideAsItsLongestLine() {
        const bubble = createTemporaryObject(component, test, { text: "A line that is too long to stand on one line alone\nand a short one" });
        const text = words(bubble);
        compare(text.lineCount, 3);
        const room = 2 * (bubble.padding + shape(bubble).tailRoom);
        verify(text.contentWidth < bubble.widest - room, "no line fills the room that it has");
        compare(shape(bubble).width, Math.ceil(text.contentWidth) + room);
        verify(Math.abs(text.x - (bubble.padding + shape(bubble).tailRoom)) < 1);
    }
    function test_holdsTextFromTheRightInItsOwnWidth() {
        const bubble = createTemporaryObject(component, test, { text: "שלום, מתי נסגר המוזיאון היום? בשש. הכניסה האחרונה בחמש וחצי" });
        const text = words(bubble);
        compare(text.effectiveHorizontalAlignment, Text.AlignRight);
        const right = text.x + text.width; // where every line ends
        verify(Math.abs(shape(bubble).width - right - (bubble.padding + shape(bubble).tailRoom)) < 1);
    }
    // The space above a capital equals the space below the last baseline.
    function test_centresItsTextByTheEye_data() {
        return [{ tag: "one line", text: "HHHHHHHH" }, { tag: "two lines", text: "HHHHHHHH\nHHHHHHHH" }];
    }
    function test_centresItsTextByTheEye(row) {
        const bubble = createTemporaryObject(component, test, { fromMe: true, text: row.text });
        waitForRendering(bubble);
        const picture = grabImage(bubble);
        const middle = Math.round(shape(bubble).x + shape(bubble).width / 2); // away from the round corners
        let ink = [];
        for (let y = 0; y < shape(bubble).height; ++y) {
            for (let x = middle - 10; x < middle + 10; ++x) {
                if (picture.red(x, y) > 140)
                    ink.push(y);
            }
        }
        verify(Math.abs(ink[0] - 12) <= 1, "above " + ink[0]);
        verify(Math.abs(shape(bubble).height - 1 - ink[ink.length - 1] - 12) <= 1, "below " + ink[ink.length - 1] + " of " + shape(bubble).height);
    }
    function test_saysWhoSpeaks() {
        compare(createTemporaryObject(component, test).Accessible.name, "Nimbrel: Hello");
        compare(createTemporaryObject(component, test, { redacted: true }).Accessible.name, "");
    }
}
