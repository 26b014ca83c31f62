#include "VornMac/System/Appearance.h"
#include "bench/Table.h"
#include "bench/Window/BareWindow.h"
#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

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

struct Watched {
    double cpu = 0;    ///< milliseconds a second
    double frames = 0; ///< a second
};

Watched watched(QQuickWindow& window)
{
    TimedApplication::runFor(settling);
    const FrameWatch frames(window);
    const double before = cpuMilliseconds();
    TimedApplication::runFor(watching);
    const double seconds = std::chrono::duration<double>(watching).count();
    const double milliseconds = cpuMilliseconds() - before;
    return {milliseconds / seconds, static_cast<double>(frames.count()) / seconds};
}

std::vector<std::string> figuresOf(const Watched& watched)
{
    return {figure(watched.cpu, "ms"), figure(watched.frames, "", 1)};
}

/// Measures a window that may draw at most `limit` frames a second. If it moves, the measured time may both begin and
/// end with a frame, one more than the limit; if it stands still, it draws none.
void watch(Table& table, const char* name, QQuickWindow& window, int limit)
{
    const Watched seen = watched(window);
    table.add(name, figuresOf(seen), {seen.frames, limit == 0 ? 0 : limit + 0.1, std::to_string(limit)});
}

/// A database that exists and that not even root can open: a link to itself.
std::filesystem::path deniedHistory()
{
    const auto path = std::filesystem::temp_directory_path() / "denied.db";
    if (!std::filesystem::is_symlink(path)) std::filesystem::create_symlink(path, path);
    return path;
}

void watchWithSpinner(Table& table, const std::filesystem::path& denied)
{
    {
        BenchWindow link({.history = denied, .isSignedIn = false});
        watch(table, "link, spinner and countdown", link.window(), 11);
    }
    BenchWindow access({.history = denied});
    watch(table, "access, spinner", access.window(), 10);
}

/// Shimmer, pulse and spinner stop in a hidden window.
void watchHidden(Table& table, const std::filesystem::path& history, const std::filesystem::path& denied)
{
    {
        BenchWindow find({.history = history, .service = {.questTakes = 1h}});
        find.window().hide();
        watch(table, "find, looking, hidden", find.window(), 0);
    }
    BenchWindow access({.history = denied});
    access.window().hide();
    watch(table, "access, pulsing, hidden", access.window(), 0);
}

void watchScreens(Table& table, const std::filesystem::path& history, const std::filesystem::path& denied)
{
    {
        BenchWindow link({.history = denied, .isSignedIn = false});
        watch(table, "link, countdown alone", link.window(), 1);
    }
    {
        BenchWindow consent({.history = history, .hasConsented = false});
        watch(table, "consent", consent.window(), 0);
    }
    {
        BenchWindow access({.history = denied});
        watch(table, "access, probing each 1.5 s", access.window(), 0);
    }
    {
        BenchWindow find({.history = history});
        find.runUntilFound();
        watch(table, "find, found", find.window(), 0);
    }
    BenchWindow done({.history = history});
    done.runUntilFound();
    done.model().upload();
    done.runUntil(Step::done);
    watch(table, "done, asking each 5 s", done.window(), 0);
}

} // namespace

bool measureIdleScreens(const std::filesystem::path& history)
{
    const auto denied = deniedHistory();
    Table table("For ten seconds", {"CPU a second", "Frames a second"});
    {
        BareWindow bare;
        table.add("a bare window", figuresOf(watched(bare.window())));
    }
    watchWithSpinner(table, denied);
    watchHidden(table, history, denied);
    Appearance::shared().setReducesMotion(true); // stops everything that spins or eases
    watchScreens(table, history, denied);
    Appearance::shared().setReducesMotion(false);
    return table.isReached();
}

} // namespace vorn::bench
