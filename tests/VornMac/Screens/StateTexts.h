#pragma once

#include "VornMac/Model/AppModel.h"

#include <set>
#include <string>

namespace vorn::testing {

using Texts = std::set<std::string>;

/// The texts that may be shown or spoken for the state of `model` at `date`, as far as they depend on a state, a
/// session or a code.
Texts textsNow(const AppModel& model, Instant date);

/// Whether `text` is about the amount and the remaining time of an upload, and `model` is sending one.
bool isOfUploadNow(const std::string& text, const AppModel& model);

/// All texts that some state shows or speaks, for any user and service: most of the window's texts.
const Texts& textsOfAllStates();

} // namespace vorn::testing
