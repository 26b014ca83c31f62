import QtQuick
import Vorn.Components
import Vorn.View

/// The common part of all screens: the model that they show, and their place in the order of steps.
OnboardingLayout {
    id: root

    required property ScreenModel model

    backTitle: model.text.back
    position: model.position
    primaryTitle: model.text.primary
    step: model.step
    subtitle: model.text.subtitle
    title: model.text.title
    totalSteps: model.stepCount

    /// Triggers the primary action, for Return anywhere on the screen.
    function goOn() {
        if (primaryTitle.length > 0 && primaryEnabled && !primaryIsQuiet && !primaryIgnoresReturn)
            primary();
    }

    function goBack() {
        if (backTitle.length > 0)
            back();
    }

    /// Repeats what failed or found nothing, if a button offers that.
    function tryAgain() {
        if (model.text.retry.length === 0)
            return;
        if (primaryTitle === model.text.retry)
            primary();
        else if (otherTitle === model.text.retry)
            other();
    }

    /// Keeps showing the present state, whatever becomes of the model; the controls do nothing from now on.
    function freeze() {
        root.model = root.model.asItWas(root);
    }
}
