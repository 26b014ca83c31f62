#pragma once

#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

namespace vorn {

/// A line on a terminal that shows the progress of work. Shows nothing for work of less than a second. Threads: one at
/// a time.
class ProgressLine {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// Writes to `terminal`, which the caller owns; null shows nothing.
    explicit ProgressLine(std::FILE* terminal, Clock clock = &std::chrono::steady_clock::now);
    ~ProgressLine() { clear(); }
    ProgressLine(ProgressLine&&) = delete;

    /// Replaces the line, at most ten times a second.
    void show(const std::string& text);

    /// The text that removes the line from the terminal; empty when there is none to remove.
    std::string eraser() const;

    /// Removes the line, so that other output can take its place.
    void clear();

private:
    std::FILE* terminal_;
    Clock clock_;
    std::chrono::steady_clock::time_point nextUpdate_;
    bool visible_ = false;
};

/// Standard error when it is a terminal, else null.
std::FILE* terminalForProgress();

} // namespace vorn
