import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "StepDots"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        StepDots {
            current: 1
            position: "Step 2 of 6"
            total: 6
        }
    }

    function dots(root) {
        return Array.from(root.children).filter(child => child.radius !== undefined);
    }

    function test_hasADotAStepAndALongOneForNow() {
        const root = createTemporaryObject(component, test);
        compare(dots(root).length, 6);
        for (const current of [1, 5, 0]) {
            root.current = current;
            const widths = dots(root).map(dot => dot.width);
            compare(widths.indexOf(Math.max(...widths)), current);
            compare(widths.filter(width => width === Math.min(...widths)).length, 5);
        }
    }
    function test_saysWhereTheUserIs() {
        compare(createTemporaryObject(component, test).Accessible.name, "Step 2 of 6");
    }
}
