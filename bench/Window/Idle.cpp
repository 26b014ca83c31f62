#include "VornMac/System/Appearance.h"
#include "bench/Window/BareWindow.h"
#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <chrono>
#include <cstdio>
#include <filesystem>

#include <sys/resource.h>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;

constexpr auto settling = 1500ms;
constexpr auto watching = 10s;

/// User and system time of the whole process, in milliseconds.
double cpuMilliseconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto of = [](const timeval& time) {
        return 1e3 * static_cast<double>(time.tv_sec) + 1e-3 * static_cast<double>(time.tv_usec);
    };
    return of(usage.ru_utime) + of(usage.ru_stime);
}

void watch(const char* name, QQuickWindow& window, const char* limit)
{
    TimedApplication::runFor(settling);
    const FrameWatch frames(window);
    const double before = cpuMilliseconds();
    TimedApplication::runFor(watching);
    const double seconds = std::chrono::duration<double>(watching).count();
    const double milliseconds = cpuMilliseconds() - before;
    std::printf("%-34s %9.2f %8.3f %% %8.1f   %s\n", name, milliseconds / seconds, milliseconds / seconds / 10,
                static_cast<double>(frames.count()) / seconds, limit);
    std::fflush(stdout);
}

/// A database that is there and that nobody can open, not even root: a link that leads to itself.
std::filesystem::path deniedHistory()
{
    const auto path = std::filesystem::temp_directory_path() / "denied.db";
    if (!std::filesystem::is_symlink(path)) std::filesystem::create_symlink(path, path);
    return path;
}

void watchWithSpinner(const std::filesystem::path& denied)
{
    {
        BenchWindow link({.history = denied, .isSignedIn = false});
        watch("link, spinner and countdown", link.window(), "11 frames/s");
    }
    BenchWindow access({.history = denied});
    watch("access, spinner", access.window(), "10 frames/s");
}

/// What shimmers, pulses and turns stands still where nobody sees it.
void watchHidden(const std::filesystem::path& history, const std::filesystem::path& denied)
{
    {
        BenchWindow find({.history = history, .service = {.questTakes = 1h}});
        find.window().hide();
        watch("find, looking, hidden", find.window(), "0 frames/s");
    }
    BenchWindow access({.history = denied});
    access.window().hide();
    watch("access, pulsing, hidden", access.window(), "0 frames/s");
}

void watchScreens(const std::filesystem::path& history, const std::filesystem::path& denied)
{
    {
        BenchWindow link({.history = denied, .isSignedIn = false});
        watch("link, countdown alone", link.window(), "1 frame/s");
    }
    {
        BenchWindow consent({.history = history, .hasConsented = false});
        watch("consent", consent.window(), "0 frames/s");
    }
    {
        BenchWindow access({.history = denied});
        watch("access, probing each 1.5 s", access.window(), "0 frames/s");
    }
    {
        BenchWindow find({.history = history});
        find.runUntilFound();
        watch("find, found", find.window(), "0 frames/s");
    }
    BenchWindow done({.history = history});
    done.runUntilFound();
    done.model().upload();
    done.runUntil(Step::done);
    watch("done, asking each 5 s", done.window(), "0 frames/s");
}

} // namespace

void measureIdleScreens(const std::filesystem::path& history)
{
    const auto denied = deniedHistory();
    std::printf("%-34s %9s %10s %8s   %s\n", "for ten seconds", "ms CPU/s", "of a core", "frames/s", "limit");
    {
        BareWindow bare;
        watch("a bare window", bare.window(), "");
    }
    watchWithSpinner(denied);
    watchHidden(history, denied);
    Appearance::shared().setReducesMotion(true); // which leaves all but what turns and eases
    watchScreens(history, denied);
    Appearance::shared().setReducesMotion(false);
}

} // namespace vorn::bench
