#pragma once

#include <cstdint>
#include <functional>

namespace vorn::testing {

/// The steps that `work` takes: how often code of a library made by `vorn_counted_library` reads memory. Unlike times,
/// the same on every machine and under any load. Threads: one at a time.
std::uint64_t stepsOf(const std::function<void()>& work);

/// The same, and calls `then` at step number `step`.
std::uint64_t stepsOf(const std::function<void()>& work, std::uint64_t step, const std::function<void()>& then);

} // namespace vorn::testing
