#pragma once

#include <chrono>
#include <functional>

namespace vorn {

/// Runs `work` on a thread of its own and returns whether it ended within `limit`. Otherwise it keeps running,
/// detached, so it must own all it uses and should end soon. An exception out of `work` ends the process. Throws
/// `std::system_error` if no thread can be started. Threads: any.
bool runWithin(std::chrono::steady_clock::duration limit, std::function<void()> work);

} // namespace vorn
