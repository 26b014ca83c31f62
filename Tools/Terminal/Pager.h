#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

namespace vorn {

/// Where long results go: the user's pager (`PAGER`, else less) while standard output is a terminal, otherwise, and
/// where there is no pager, standard output itself. Threads: one at a time; a write waits for the reader.
class Pager {
public:
    Pager() : Pager(commandForUser()) {}
    /// Starts `command` in a shell, if there is one.
    explicit Pager(const std::optional<std::string>& command);
    /// Waits until the user has read.
    ~Pager() { finish(); }
    Pager(Pager&&) = delete;

    /// False when nobody reads any more: a user who has left the pager, or a failure.
    bool write(std::string_view text);
    /// Waits until the user has read. False when what was written did not get there; leaving a pager is no failure.
    bool finish();

private:
    static std::optional<std::string> commandForUser();
    void start(const std::string& command);

    FileDescriptor input_{-1}; ///< of the pager
    pid_t process_ = -1;       ///< none for standard output
    bool failed_ = false;
};

} // namespace vorn
