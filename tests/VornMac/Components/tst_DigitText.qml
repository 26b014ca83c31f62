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
        tryVerify(() => text.width === 2 * one);
    }
    function test_speaksAsAWhole() {
        const text = createTemporaryObject(component, test, { text: "1,234" });
        compare(text.Accessible.role, Accessible.StaticText);
        compare(text.Accessible.name, "1,234");
    }
}
