#include "Tools/Terminal/Terminal.h"

#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace vorn {
namespace {

using Background = TerminalOptions::Background;

std::string_view environment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Some terminals give their colours as "foreground;background" or "foreground;default;background", by number.
std::optional<Background> backgroundOf(std::string_view colours)
{
    const auto last = colours.rfind(';');
    if (last == std::string_view::npos) return std::nullopt;
    const std::string_view background = colours.substr(last + 1);
    if (background.empty() || background == "default") return std::nullopt;
    return background == "7" || background == "15" ? Background::light : Background::dark;
}

} // namespace

Terminal::Traits Terminal::currentTraits()
{
    Traits traits;
    traits.isTerminal = isatty(STDERR_FILENO) != 0;
    const std::string_view kind = environment("TERM");
    traits.colours = traits.isTerminal && environment("NO_COLOR").empty() && !kind.empty() && kind != "dumb";
    traits.background = backgroundOf(environment("COLORFGBG"));
    return traits;
}

Terminal::WindowSize Terminal::currentWindowSize()
{
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0;
    return known ? WindowSize{size.ws_col, size.ws_row} : WindowSize{};
}

void Terminal::say(const std::string& line) const
{
    std::fputs((line + "\n").c_str(), file_);
    std::fflush(file_);
}

QRCodeText::Ink Terminal::ink(std::optional<Background> background) const
{
    if (traits_.colours) return QRCodeText::Ink::colours;
    const auto known = background ? background : traits_.background;
    return known == Background::light ? QRCodeText::Ink::lightBackground : QRCodeText::Ink::darkBackground;
}

} // namespace vorn
