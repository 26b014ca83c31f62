#pragma once

#include "Platform/Base/FileDescriptor.h"

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace vorn::testing {

/// A terminal window of 80 columns and 24 lines. Keeps what programs print to it, and lets a test type. Threads: any.
class PseudoTerminal {
public:
    PseudoTerminal();
    ~PseudoTerminal();
    PseudoTerminal(PseudoTerminal&&) = delete;

    /// The path for programs to open.
    const std::string& path() const noexcept { return path_; }

    /// As from the keyboard: Return is "\r".
    void type(std::string_view keys) const;

    /// Everything shown so far, with the line ends of a terminal, "\r\n", and its echo of what was typed.
    std::string shown() const;

private:
    void read();

    FileDescriptor keyboardAndScreen_;
    std::string path_;
    FileDescriptor line_; ///< held open, so that the last program's output is not lost when it ends
    mutable std::mutex mutex_;
    std::string shown_;
    std::atomic<bool> closed_ = false;
    std::thread reader_;
};

} // namespace vorn::testing
