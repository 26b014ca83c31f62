#pragma once

#include "Platform/Base/UniqueName.h"

/// What items in the temporary directory are called. An item of another name is never swept: `TemporaryItems` knows
/// these alone, and unfinished files (`IncompleteFile`).
namespace vorn::temporarynames {

inline constexpr UniqueName snapshot{"vorn-messages-", ""}; ///< a folder with a private copy of the Messages database
inline constexpr UniqueName archive{"vorn-nimbrel-", ".zip"};

} // namespace vorn::temporarynames
