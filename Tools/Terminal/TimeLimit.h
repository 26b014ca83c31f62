#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"

namespace vorn {

/// Waits for `work`, but not for longer than `limit`; what has not ended by then is cancelled. Returns whether it ended
/// by itself. `work` must throw nothing but `Cancelled`. `context`, the one it is awaited on, and `clock` must outlive
/// it.
Async<bool> endsWithin(MainContext* context, Clock* clock, Clock::Duration limit, Async<> work);

} // namespace vorn
