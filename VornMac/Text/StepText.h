#pragma once

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/ScreenText.h"
#include "VornMac/Text/Step.h"

namespace vorn {

/// The state that decides a screen's texts.
struct StepState {
    Step step = Step::link;
    LinkPhase link{};
    FullDiskAccessStatus access = FullDiskAccessStatus::denied;
    ScanPhase scan{};
    UploadPhase upload{};
    UploadOutcome outcome{}; ///< of the last upload; the quest's members do not depend on one
};

/// Returns the texts of the step's screen. Threads: any.
ScreenText textOfStep(const StepState& state);

} // namespace vorn
