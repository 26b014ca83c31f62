/// The time from the start of the process to its first frame, and the peak memory half a second later: of the
/// application and, in turns with it, of a bare Qt Quick window. `bench-window [ROUNDS]` ends with status 3 if a goal
/// is not reached; other programs must be idle. With QT_QPA_PLATFORM=offscreen and QT_QUICK_BACKEND=software it needs
/// no screen.

#include "bench/EmptyUserFolders.h"
#include "bench/FirstFrame/ShownWindow.h"
#include "bench/Table.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::bench {
namespace {

constexpr int usualRounds = 20;
constexpr double nanosecondsInMillisecond = 1e6;
constexpr double bytesInMebibyte = 1024 * 1024;

struct Figures {
    std::vector<double> milliseconds, mebibytes;
};

void measure(const std::string& command, Figures& figures)
{
    const auto begin = std::chrono::steady_clock::now().time_since_epoch();
    std::FILE* const output = popen(command.c_str(), "r");
    long long frame = 0, memory = 0;
    const bool told = output != nullptr && std::fscanf(output, "%lld %lld", &frame, &memory) == 2;
    if (output == nullptr || pclose(output) != 0 || !told) throw std::runtime_error("failed: " + command);
    const auto start = std::chrono::duration_cast<std::chrono::nanoseconds>(begin).count();
    figures.milliseconds.push_back(static_cast<double>(frame - start) / nanosecondsInMillisecond);
    figures.mebibytes.push_back(static_cast<double>(memory) / bytesInMebibyte);
}

double most(const Figures& figures)
{
    return std::ranges::max(figures.mebibytes);
}

/// Adds the row of one figure: the application's beside the bare window's.
void add(Table& table, const char* name, double application, double bare, const char* unit, double times)
{
    char reach[64];
    std::snprintf(reach, sizeof reach, "%g × bare (is %.2f ×)", times, application / bare);
    table.add(name, {figure(application, unit, 1), figure(bare, unit, 1)}, {application, times * bare, reach});
}

/// Returns whether the application reaches its goals.
bool compare(const Figures& application, const Figures& bare)
{
    Table table("What", {"Measured", "Bare window"});
    add(table, "start to first frame, median", median(application.milliseconds), median(bare.milliseconds), "ms", 1.5);
    add(table, "peak memory", most(application), most(bare), "MiB", 1.35);
    return table.isReached();
}

bool run(const std::string& program, int rounds)
{
    const EmptyUserFolders folders;
    const std::string show = "exec '" + program + "' --show ";
    Figures bare, application;
    for (int round = 0; round < rounds; ++round) {
        measure(show + "bare", bare);
        measure(show +
                    "application -MainWindowGeometry '0 0 1180 760' -VornAPIBaseURLOverride http://127.0.0.1:9"
                    " -VornSettingsFile " +
                    folders.file("settings.ini"),
                application);
    }
    return compare(application, bare);
}

} // namespace
} // namespace vorn::bench

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (arguments.size() > 1 && arguments[0] == "--show")
        return vorn::bench::showWindow(arguments[1] == "bare", argc - 2, argv + 2);
    try {
        constexpr int notReached = 3;
        const int rounds = arguments.empty() ? vorn::bench::usualRounds : std::atoi(argv[1]);
        return vorn::bench::run(std::filesystem::absolute(argv[0]).native(), rounds) ? 0 : notReached;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-window: %s\n", error.what());
        return 1;
    }
}
