#include "VornSandbox/Service/RequestLog.h"

#include <fmt/format.h>

namespace vorn::sandbox {
namespace {

constexpr std::size_t longest = 300;

/// Paths and names of headers are the client's to choose: they must not forge lines or reach a terminal. `first` is the
/// first character that stays.
std::string printable(std::string_view text, char first)
{
    std::string result;
    for (const char c : text.substr(0, longest)) {
        const bool plain = c >= first && c < 0x7f;
        result += plain ? std::string(1, c) : fmt::format("%{:02X}", static_cast<unsigned char>(c));
    }
    return result;
}

std::string word(std::string_view text)
{
    return printable(text, '!');
}

std::string sentence(std::string_view text)
{
    return printable(text, ' ');
}

} // namespace

void RequestLog::request(const Entry& entry)
{
    line(fmt::format("{} {} {} {}>{} bytes {} ms", word(entry.method), word(entry.path), entry.outcome, entry.received,
                     entry.sent, entry.took.count()));
}

void RequestLog::warning(std::string_view text)
{
    line(fmt::format("warning: {}", sentence(text)));
}

void RequestLog::line(const std::string& text)
{
    const std::lock_guard lock(mutex_);
    write_(text);
}

} // namespace vorn::sandbox
