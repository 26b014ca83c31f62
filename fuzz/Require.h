#pragma once

#include "Platform/Base/Fatal.h"

namespace vorn {

/// Ends the run with a finding if `rule`, which must always hold, does not.
inline void require(bool holds, const char* rule)
{
    if (!holds) fatalError(rule);
}

} // namespace vorn
