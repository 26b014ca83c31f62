#include "VornSandbox/Service/HTTP/RequestLog.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

/// Paths are the client's to choose: they must not forge lines or reach a terminal.
std::string printable(std::string_view text)
{
    std::string result;
    for (const char c : text.substr(0, 300)) {
        const bool plain = c > ' ' && c < 0x7f;
        result += plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return result;
}

} // namespace

void RequestLog::request(const Entry& entry)
{
    line(fmt::format("{} {} {} {}>{} bytes {} ms", printable(entry.method), printable(entry.path), entry.outcome,
                     entry.received, entry.sent, entry.took.count()));
}

void RequestLog::warning(std::string_view text)
{
    line(fmt::format("warning: {}", text));
}

void RequestLog::line(const std::string& text)
{
    const std::lock_guard lock(mutex_);
    write_(text);
}

} // namespace vorn::sandbox
