#include "Tools/Support/ProgressLine.h"

#include <utility>

#include <unistd.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1s;
constexpr auto betweenUpdates = 100ms;
constexpr const char* clearLine = "\r\x1B[K"; // ECMA-48: erase from the cursor to the end of the line

} // namespace

ProgressLine::ProgressLine(std::FILE* terminal, Clock clock)
    : terminal_(terminal), clock_(std::move(clock)), nextUpdate_(clock_() + patience)
{
}

void ProgressLine::show(const std::string& text)
{
    const auto now = clock_();
    if (terminal_ == nullptr || now < nextUpdate_) return;
    nextUpdate_ = now + betweenUpdates;
    std::fputs((clearLine + text).c_str(), terminal_);
    std::fflush(terminal_);
    visible_ = true;
}

std::string ProgressLine::eraser() const
{
    return visible_ ? clearLine : "";
}

void ProgressLine::clear()
{
    if (!visible_) return;
    std::fputs(eraser().c_str(), terminal_);
    visible_ = false;
    std::fflush(terminal_);
}

std::FILE* terminalForProgress()
{
    return isatty(STDERR_FILENO) != 0 ? stderr : nullptr;
}

} // namespace vorn
