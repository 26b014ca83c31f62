#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vorn {

/// Where the lines of every log go. Threads: `write` is called from any, also from several at once.
class LogSink {
public:
    virtual ~LogSink() = default;

    /// One line of well-formed UTF-8 without control characters. Must not log.
    virtual void write(std::string_view subsystem, std::string_view category, std::string_view line) = 0;
};

/// From now on sends the lines of the whole process to `sink`, or to the system's log when it is null. Gives what it
/// replaces, to put it back; a line being written meanwhile may still reach that one. Threads: any.
std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink);

/// The sink in use; null for the system's log.
std::shared_ptr<LogSink> currentLogSink();

/// Writes lines about failures that the user does not see. The system's log is public: nothing secret belongs there.
/// A cheap value. Threads: any.
class Log {
public:
    /// `subsystem` is the application's bundle identifier, `category` a part of it, such as "api".
    Log(std::string subsystem, std::string category);

    /// Writes one line. What is ill-formed is replaced by U+FFFD; control characters and line breaks, with which a
    /// foreign text could pass for several lines, are written as escapes. A line that cannot be written is lost.
    void error(std::string_view line) const noexcept;

private:
    std::string subsystem_;
    std::string category_;
};

} // namespace vorn
