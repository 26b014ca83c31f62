#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"

namespace vorn {

/// Waits for `work`, for `limit` at most, then cancels it. Returns whether it ended by itself. `work` must throw
/// nothing but `Cancelled`. `context`, on which the caller runs, and `clock` must outlive the wait.
Async<bool> endsWithin(MainContext* context, Clock* clock, Clock::Duration limit, Async<> work);

} // namespace vorn
