import QtQuick
import Vorn.Components
import Vorn.View

/// What the six screens have in common: the model that they show, and where in the order of steps they stand.
OnboardingLayout {
    id: root

    required property ScreenModel model

    backTitle: model.text.back
    position: model.position
    primaryTitle: model.text.primary
    subtitle: model.text.subtitle
    title: model.text.title
    totalSteps: 6

    /// Goes on showing what it shows now, whatever becomes of the model; its controls do nothing any more.
    function freeze() {
        root.model = root.model.asItWas(root);
    }
}
