import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "DigitText"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        DigitText {}
    }

    function test_givesEveryDigitTheSameWidth() {
        const eight = createTemporaryObject(component, test, { text: "8" });
        for (const digit of "012345679")
            compare(createTemporaryObject(component, test, { text: digit }).width, eight.width, digit);
        compare(createTemporaryObject(component, test, { text: "1:11" }).width, createTemporaryObject(component, test, { text: "0:00" }).width);
    }
    function test_growsWithItsText() {
        const text = createTemporaryObject(component, test, { text: "9" });
        const one = text.width;
        text.text = "10";
        tryVerify(() => Math.abs(text.width - 2 * one) < 0.01);
    }
    function test_growsWithItsFont() {
        const text = createTemporaryObject(component, test, { text: "Jan 10", font: Qt.font({ pixelSize: 14 }) });
        text.font = Qt.font({ pixelSize: 28 });
        const fresh = createTemporaryObject(component, test, { text: "Jan 10", font: text.font });
        tryVerify(() => Math.abs(text.width - fresh.width) < 0.01);
    }
    Component {
        id: plain
        Text {
            textFormat: Text.PlainText
        }
    }
    function test_keepsTogetherWhatIsNoDigit_data() {
        return ["14 مارس 2026 – 3 أبريل 2026", "١٤ مارس ٢٠٢٦", "१४ मार्च २०२६", "3‏/4‏/2026", "2026년 3월", "क्षत्रिय"].map(text => ({ tag: text, text: text }));
    }
    function test_keepsTogetherWhatIsNoDigit(row) {
        const text = createTemporaryObject(component, test, { text: row.text });
        const pieces = Array.from(text.children).filter(child => child instanceof Text).map(child => child.text);
        compare(pieces.join(""), row.text);
        const isRightToLeft = /[\u0590-\u08ff\u200f]/.test(row.text);
        if (isRightToLeft)
            compare(pieces, [row.text]);
        for (const piece of pieces)
            verify(isRightToLeft || /^([0-9]|[^0-9]+)$/.test(piece), piece);
        const whole = createTemporaryObject(plain, test, { text: row.text, font: text.font });
        if (pieces.length === 1)
            compare(text.implicitWidth, whole.implicitWidth);
    }
    function test_splitsNoCharacter_data() {
        return [{ tag: "keycap", text: "1️⃣2", pieces: ["1️⃣", "2"] }, { tag: "two units", text: "1😀2𝟙3", pieces: ["1", "😀", "2", "𝟙", "3"] }, { tag: "mark of two units", text: "2󠄀3", pieces: ["2󠄀", "3"] }, { tag: "old script from the right", text: "12 𐤀", pieces: ["12 𐤀"] }];
    }
    function test_splitsNoCharacter(row) {
        compare(createTemporaryObject(component, test, { text: row.text }).pieces, row.pieces);
    }
    function test_standsNoFurtherApartThanDigitsDo() {
        const text = createTemporaryObject(component, test, { text: "00000000" });
        const whole = createTemporaryObject(plain, test, { text: "00000000", font: text.font });
        verify(text.width <= whole.implicitWidth * 1.04, text.width + " of " + whole.implicitWidth);
    }
    function test_showsNothingForNothing() {
        compare(createTemporaryObject(component, test, { text: "" }).implicitWidth, 0);
    }
    function test_speaksAsAWhole() {
        const text = createTemporaryObject(component, test, { text: "1,234" });
        compare(text.Accessible.role, Accessible.StaticText);
        compare(text.Accessible.name, "1,234");
    }
}
