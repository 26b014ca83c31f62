#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace vorn {

/// Receives the lines of every log. Threads: `write` may be called concurrently.
class LogSink {
public:
    virtual ~LogSink() = default;

    /// One line of well-formed UTF-8 without control characters. Must not log.
    virtual void write(std::string_view subsystem, std::string_view category, std::string_view line) = 0;
};

/// Sends the lines of the whole process to `sink`, or to the system's log when it is null. Returns the previous sink,
/// which may still receive lines that are being written. Threads: any.
std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink);

/// The sink in use; null for the system's log.
std::shared_ptr<LogSink> currentLogSink();

/// Writes lines about failures that the user does not see. The system's log is public: never log secrets. Cheap to
/// copy. Threads: any.
class Log {
public:
    /// `subsystem` is the application's bundle identifier, `category` a part of the application, such as "api".
    Log(std::string subsystem, std::string category);

    /// Writes one line. Ill-formed UTF-8 becomes U+FFFD; control characters and line breaks, which could forge further
    /// lines, are escaped. Failures are ignored.
    void error(std::string_view line) const noexcept;

private:
    std::string subsystem_;
    std::string category_;
};

} // namespace vorn
