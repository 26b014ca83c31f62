#pragma once

#include "Tools/Manual/CommandDescription.h"

#include <string>

namespace vorn {

/// The page of section 1 about `program`, in the macros of man(7). `version` stands at its foot.
std::string manualPage(const CommandDescription& program, const std::string& version);

} // namespace vorn
