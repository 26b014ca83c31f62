/// What the screens cost. `bench-screens idle HISTORY`, `bench-screens frames HISTORY`, `bench-screens everything SMALL
/// HISTORY` and `bench-screens preview SIX HISTORY`; a HISTORY is what vorn-sample-history writes. Ends with status 3
/// if a goal is not reached. Other programs must be idle. With QT_QPA_PLATFORM=offscreen and QT_QUICK_BACKEND=software
/// it needs no screen.

#include "VornMac/Application/VornMacApp.h"
#include "VornMac/System/Appearance.h"
#include "bench/EmptyUserFolders.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <vector>

namespace {

constexpr int wrongArguments = 2;
constexpr int notReached = 3;

int usage()
{
    std::fputs("Usage: bench-screens idle|frames HISTORY\n       bench-screens everything SMALL HISTORY\n"
               "       bench-screens preview SIX HISTORY\n",
               stderr);
    return wrongArguments;
}

int measure(const std::vector<std::string_view>& arguments)
{
    using namespace vorn::bench;
    const std::string_view what = arguments.empty() ? "" : arguments[0];
    const auto status = [](bool isReached) { return isReached ? 0 : notReached; };
    if (arguments.size() == 2 && what == "idle") return status(measureIdleScreens(arguments[1]));
    if (arguments.size() == 2 && what == "frames") return status(measureFrames(arguments[1]));
    if (arguments.size() == 3 && what == "everything") return status(measureEverything(arguments[1], arguments[2]));
    if (arguments.size() == 3 && what == "preview") return status(measurePreview(arguments[1], arguments[2]));
    return usage();
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    const vorn::bench::EmptyUserFolders folders;
    vorn::VornMacApp::describe();
    const vorn::bench::TimedApplication application(argc, argv);
    vorn::bench::TimedApplication::setQuitOnLastWindowClosed(false);
    vorn::Appearance::shared().setTheme(vorn::Appearance::Theme::light);
    try {
        return measure(arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-screens: %s\n", error.what());
        return 1;
    }
}
