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
    function texts(item) {
        return Array.from(item.children).reduce((all, child) => all.concat(child.text !== undefined ? [child.text] : [], texts(child)), []);
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
    function test_saysWhatIsKnownInFigures() {
        const root = createTemporaryObject(component, test, { amounts: "3.4 of 8.1 MB", percents: "42 %" });
        const height = root.implicitHeight;
        compare(texts(root), ["file.zip", "42 %", "3.4 of 8.1 MB"]);
        root.amounts = "";
        compare(root.implicitHeight, height, "nothing moves when more is known");
    }
    function test_hasALightRunAlongItWhileNobodyKnowsHowMuchIsDone() {
        const root = createTemporaryObject(component, test);
        compare(bar(root).sweep, -1);
        root.isBusy = true;
        tryVerify(() => bar(root).sweep > 0, 2000);
        root.isBusy = false;
        compare(bar(root).sweep, -1);
    }
    function test_hasNoLightWithReducedMotionOrWhereItIsHidden() {
        const root = createTemporaryObject(component, test, { isBusy: true });
        looks.setReducesMotion(true);
        compare(bar(root).sweep, -1);
        looks.setReducesMotion(false);
        tryVerify(() => bar(root).sweep >= 0, 2000);
        root.visible = false;
        compare(bar(root).sweep, -1);
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
