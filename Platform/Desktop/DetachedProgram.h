#pragma once

#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// A program in its own session, which may outlive this process. Inherits the environment and the current folder, but
/// no open files and no signal mask; its standard streams are /dev/null.
class DetachedProgram {
public:
    /// Searches `PATH` for a `program` without "/". Throws `std::system_error` when it cannot be started.
    DetachedProgram(const std::string& program, std::vector<std::string> arguments);

    /// The exit status, or 128 plus the number of the signal that ended it; nothing if it still runs after `limit`, or
    /// if SIGCHLD is ignored.
    std::optional<int> waitForEnd(std::chrono::milliseconds limit) const;

private:
    std::shared_future<std::optional<int>> end_;
};

} // namespace vorn
