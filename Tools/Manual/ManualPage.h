#pragma once

#include "Tools/Manual/CommandDescription.h"

#include <string>

namespace vorn {

/// The section 1 manual page of `program`, in man(7) macros, with `version` in its footer.
std::string manualPage(const CommandDescription& program, const std::string& version);

} // namespace vorn
