#pragma once

#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// A program in a session of its own, which may outlive this process. It inherits the environment and the current
/// folder; its standard streams lead nowhere, no other file is open in it, and no signal blocked.
class DetachedProgram {
public:
    /// Looks for a `program` without "/" in `PATH`. Throws `std::system_error` when it cannot be started.
    DetachedProgram(const std::string& program, std::vector<std::string> arguments);

    /// Its exit status, 128 and the signal's number where one has ended it; nothing when it runs after `limit`, and
    /// when this process was told not to learn how others end.
    std::optional<int> waitForEnd(std::chrono::milliseconds limit) const;

private:
    std::shared_future<std::optional<int>> end_;
};

} // namespace vorn
