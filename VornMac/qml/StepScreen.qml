import QtQuick
import Vorn.Components
import Vorn.View

/// What all screens have in common: the model that they show, and where in the order of steps they stand.
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

    /// Does what leads on, as Return does from anywhere.
    function goOn() {
        if (primaryTitle.length > 0 && primaryEnabled && !primaryIsQuiet && !primaryNeedsPurpose)
            primary();
    }

    function goBack() {
        if (backTitle.length > 0)
            back();
    }

    /// Does again what failed or found nothing, where the actions offer that.
    function tryAgain() {
        if (model.text.retry.length === 0)
            return;
        if (primaryTitle === model.text.retry)
            primary();
        else if (otherTitle === model.text.retry)
            other();
    }

    /// Goes on showing what it shows now, whatever becomes of the model; its controls do nothing any more.
    function freeze() {
        root.model = root.model.asItWas(root);
    }
}
