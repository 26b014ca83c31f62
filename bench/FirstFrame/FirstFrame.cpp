/// From the start of the process to the first frame, and the memory by then: of the application, and of a bare window
/// of Qt Quick in turns with it. `bench-window [ROUNDS]`; other programs must be still. QT_QPA_PLATFORM=offscreen and
/// QT_QUICK_BACKEND=software measure it without a screen.

#include "bench/EmptyUserFolders.h"
#include "bench/FirstFrame/ShownWindow.h"

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

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void print(const char* name, const Figures& figures)
{
    std::printf("%-22s %7.1f %7.1f %10.1f\n", name, std::ranges::min(figures.milliseconds),
                median(figures.milliseconds), std::ranges::max(figures.mebibytes));
}

void run(const std::string& program, int rounds)
{
    const EmptyUserFolders folders;
    const std::string show = "exec '" + program + "' --show ";
    Figures limit, application;
    for (int round = 0; round < rounds; ++round) {
        measure(show + "bare", limit);
        measure(show +
                    "application -MainWindowGeometry '0 0 1180 760' -VornAPIBaseURLOverride http://127.0.0.1:9"
                    " -VornSettingsFile " +
                    folders.file("settings.ini"),
                application);
    }
    std::printf("%-22s %7s %7s %10s\n", "to the first frame", "best ms", "median", "peak MiB");
    print("bare Qt Quick window", limit);
    print("Vorn", application);
}

} // namespace
} // namespace vorn::bench

int main(int argc, char** argv)
{
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (arguments.size() > 1 && arguments[0] == "--show")
        return vorn::bench::showWindow(arguments[1] == "bare", argc - 2, argv + 2);
    try {
        vorn::bench::run(std::filesystem::absolute(argv[0]).native(),
                         arguments.empty() ? vorn::bench::usualRounds : std::atoi(argv[1]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-window: %s\n", error.what());
        return 1;
    }
}
