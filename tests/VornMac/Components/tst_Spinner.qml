import QtQuick
import QtTest
import Vorn.Components

TestCase {
    id: test
    name: "Spinner"
    when: windowShown
    width: 600
    height: 400
    visible: true

    Component {
        id: component
        Spinner {
            size: 20
        }
    }

    function cleanup() {
        looks.setReducesMotion(false);
    }

    function test_turnsWhileItIsSeen() {
        const spinner = createTemporaryObject(component, test);
        verify(spinner.isSpinning);
        const before = spinner.turns;
        tryVerify(() => spinner.turns !== before, 2000);
    }
    function test_standsStillWhereItIsHidden() {
        const spinner = createTemporaryObject(component, test);
        spinner.visible = false;
        verify(!spinner.isSpinning);
        const before = spinner.turns;
        wait(250); // longer than two turns
        compare(spinner.turns, before);
        spinner.visible = true;
        verify(spinner.isSpinning);
    }
    function test_standsStillWithReducedMotion() {
        looks.setReducesMotion(true);
        const spinner = createTemporaryObject(component, test);
        verify(!spinner.isSpinning);
        looks.setReducesMotion(false);
        verify(spinner.isSpinning);
    }
    function test_isAsLargeAsAskedFor() {
        const spinner = createTemporaryObject(component, test);
        compare(spinner.implicitWidth, 20);
        compare(spinner.implicitHeight, 20);
    }
}
