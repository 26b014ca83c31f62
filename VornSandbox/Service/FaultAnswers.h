#pragma once

#include "VornSandbox/Service/Call.h"
#include "VornSandbox/Service/FaultPlan.h"

#include <optional>

/// What faults do to answers. Threads: any.
namespace vorn::sandbox {

/// What is answered in place of the service; nothing when the service answers after all. Sleeps when the fault is to be
/// slow.
std::optional<Answer> answerInstead(const Fault& fault);

/// Spoils what the service answered, for faults that do.
void spoil(Answer& answer, const Fault& fault);

} // namespace vorn::sandbox
