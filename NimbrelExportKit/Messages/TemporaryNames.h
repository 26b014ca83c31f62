#pragma once

#include "Platform/Base/UniqueName.h"

/// Names of items in the temporary directory. `TemporaryItems` sweeps only these and unfinished files
/// (`IncompleteFile`).
namespace vorn::temporarynames {

inline constexpr UniqueName snapshot{"vorn-messages-", ""}; ///< a folder with a private copy of the Messages database
inline constexpr UniqueName archive{"vorn-nimbrel-", ".zip"};

} // namespace vorn::temporarynames
