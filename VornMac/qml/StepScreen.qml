import QtQuick
import Vorn.Components
import Vorn.View

/// What the six screens have in common: the model that they show, and where in the order of steps they stand.
OnboardingLayout {
    required property ScreenModel model

    totalSteps: 6
}
