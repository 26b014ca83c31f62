#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace vorn {

/// Shows long results: in the user's pager (`PAGER`, else less) while standard output is a terminal and there is one,
/// otherwise on standard output itself. Threads: one at a time; a write waits for the reader.
class Pager {
public:
    Pager() : Pager(commandForUser()) {}
    /// Starts `command` in a shell, if there is one.
    explicit Pager(const std::optional<std::string>& command);
    /// Waits until the user has read.
    ~Pager() { finish(); }
    Pager(Pager&&) = delete;

    /// False when nobody reads any more: the user has left the pager, or it failed.
    bool write(std::string_view text);
    /// Waits until the user has read. False if not everything was passed on; leaving a pager is not a failure.
    bool finish();

private:
    static std::optional<std::string> commandForUser();
    void start(const std::string& command);

    FileDescriptor input_{-1}; ///< the pager's
    pid_t process_ = -1;       ///< -1 for standard output
    bool failed_ = false;
};

} // namespace vorn
