#include "Platform/Base/Log.h"

#include "Platform/Base/SystemLog.h"
#include "Platform/Base/Text.h"

#include <cstdio>
#include <exception>
#include <mutex>
#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

struct SinkInUse {
    std::mutex mutex; // guards `sink`; not held while it writes
    std::shared_ptr<LogSink> sink;
};

/// Never destroyed: other destructors may log at exit.
SinkInUse& sinkInUse()
{
    static auto& inUse = *new SinkInUse;
    return inUse;
}

bool breaksALine(char32_t scalar)
{
    const bool control = scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
    return control || scalar == U'\u2028' || scalar == U'\u2029';
}

std::string escape(char32_t scalar)
{
    switch (scalar) {
    case U'\n': return "\\n";
    case U'\r': return "\\r";
    case U'\t': return "\\t";
    default: return fmt::format("\\u{{{:x}}}", static_cast<std::uint32_t>(scalar));
    }
}

/// `line` as well-formed UTF-8 with control characters escaped.
std::string asOneLine(std::string_view line)
{
    std::string result;
    for (const char32_t scalar : text::scalars(line)) {
        if (breaksALine(scalar))
            result += escape(scalar);
        else
            text::append(result, scalar);
    }
    return result;
}

} // namespace

std::shared_ptr<LogSink> setLogSink(std::shared_ptr<LogSink> sink)
{
    SinkInUse& inUse = sinkInUse();
    const std::lock_guard lock(inUse.mutex);
    return std::exchange(inUse.sink, std::move(sink));
}

std::shared_ptr<LogSink> currentLogSink()
{
    SinkInUse& inUse = sinkInUse();
    const std::lock_guard lock(inUse.mutex);
    return inUse.sink;
}

Log::Log(std::string subsystem, std::string category) : subsystem_(std::move(subsystem)), category_(std::move(category))
{
}

void Log::error(std::string_view line) const noexcept
{
    try {
        const std::string written = asOneLine(line);
        if (const auto sink = currentLogSink())
            sink->write(subsystem_, category_, written);
        else
            writeToSystemLog(subsystem_, category_, written);
    } catch (const std::exception& error) { // often called from clean-up, which must go on
        std::fprintf(stderr, "cannot write to the log: %s\n", error.what());
    }
}

} // namespace vorn
