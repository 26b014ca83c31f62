#pragma once

#include "VornMac/Model/AppModel.h"

#include <set>
#include <string>

namespace vorn::testing {

using Texts = std::set<std::string>;

/// What may be shown or said of what `model` knows at `date`, as far as it depends on a state, a session or a code.
Texts textsNow(const AppModel& model, Instant date);

/// Whether `text` says how much of an upload is sent and how long it still takes, and `model` sends one.
bool isOfUploadNow(const std::string& text, const AppModel& model);

/// What is shown or said in some state whatever the user and the service: most of the window's texts.
const Texts& textsOfAllStates();

} // namespace vorn::testing
