#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"

namespace vorn {

/// Waits for `work`, but for `limit` at most, and cancels it then. Returns whether it ended by itself. `work` must
/// throw nothing but `Cancelled`. `context`, the one that awaits it, and `clock` must outlive it.
Async<bool> endsWithin(MainContext* context, Clock* clock, Clock::Duration limit, Async<> work);

} // namespace vorn
