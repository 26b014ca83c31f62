import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "GradientProgressBar"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        GradientProgressBar {
            label: "file.zip"
            percentage: "0 percent"
            value: 0
            width: 300
        }
    }

    function bar(root) {
        return Array.from(root.children).find(child => child.trackColor !== undefined);
    }
    function cleanup() {
        looks.setReducesMotion(false);
    }

    function test_saysItsPercentage() {
        const root = createTemporaryObject(component, test, { percentage: "42 percent", value: 0.42 });
        compare(root.Accessible.role, Accessible.ProgressBar);
        compare(root.Accessible.name, "file.zip");
        compare(root.Accessible.description, "42 percent");
    }
    function test_isEightPointsHigh() {
        compare(bar(createTemporaryObject(component, test)).height, 8);
    }
    function test_easesToItsValue() {
        const root = createTemporaryObject(component, test);
        root.value = 1;
        verify(bar(root).value < 1);
        tryVerify(() => bar(root).value === 1, 2000);
    }
    function test_goesThereAtOnceWithReducedMotion() {
        looks.setReducesMotion(true);
        const root = createTemporaryObject(component, test);
        root.value = 0.5;
        compare(bar(root).value, 0.5);
    }
    function test_takesAFifthOfASecond() {
        compare(Theme.progressEase, 200);
        compare(Theme.crossFade, 220);
        looks.setReducesMotion(true);
        compare(Theme.progressEase, 0);
        compare(Theme.crossFade, 0);
    }
}
