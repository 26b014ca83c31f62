#pragma once

#include <chrono>
#include <functional>

namespace vorn {

/// Runs `work` on a thread of its own and waits for its end, for at most `limit`; then false. Work that has not ended
/// by then goes on without a caller, so it must own all that it uses, and is expected to end soon by itself. What
/// `work` throws ends the process. Throws `std::system_error` when there can be no more threads. Threads: any.
bool runWithin(std::chrono::steady_clock::duration limit, std::function<void()> work);

} // namespace vorn
