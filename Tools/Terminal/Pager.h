#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace vorn {

/// Shows long results: in the user's pager (`PAGER`, else less) if standard output is a terminal and there is a pager,
/// otherwise on standard output itself. Threads: one at a time; a write waits for the reader.
class Pager {
public:
    Pager() : Pager(commandForUser()) {}
    /// Starts `command` in a shell; without a command, writes to standard output.
    explicit Pager(const std::optional<std::string>& command);
    /// Waits until the user leaves the pager.
    ~Pager() { finish(); }
    Pager(Pager&&) = delete;

    /// Returns false once nothing reads any more: the user has left the pager, or it failed.
    bool write(std::string_view text);
    /// Waits until the user leaves the pager. Returns false if not everything was passed on; leaving early is not a
    /// failure.
    bool finish();

private:
    static std::optional<std::string> commandForUser();
    void start(const std::string& command);

    FileDescriptor input_{-1}; ///< the pager's standard input
    pid_t process_ = -1;       ///< -1 for standard output
    bool failed_ = false;
};

} // namespace vorn
