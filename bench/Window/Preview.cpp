#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace vorn::bench {
namespace {

using Steady = std::chrono::steady_clock;

constexpr int rounds = 5;

void measureScans(const std::filesystem::path& history)
{
    std::vector<double> times;
    Steady::time_point changed;
    for (int round = 0; round < rounds; ++round) { // a window each: what is shown again already would not change
        BenchWindow bench({.history = history, .onModel = [&changed](AppModel& model) {
                               QObject::connect(&model, &AppModel::exportResultChanged, &model,
                                                [&changed] { changed = Steady::now(); });
                           }});
        bench.runUntilFound();
        const FrameWatch frames(bench.window());
        TimedApplication::runUntil([&frames] { return frames.count() > 0; });
        times.push_back(milliseconds(frames.last() - changed));
        if (round + 1 < rounds) continue;
        std::ranges::sort(times);
        std::printf("%-34s %8.2f %8.2f %8.2f   %s\n",
                    ("preview of " + std::to_string(bench.model().exportResult()->messages.size())).c_str(),
                    times.front(), times[times.size() / 2], times.back(), "the same for any size");
        std::fflush(stdout);
    }
}

} // namespace

void measurePreview(const std::filesystem::path& six, const std::filesystem::path& history)
{
    std::printf("%-34s %8s %8s %8s   %s\n", "found to painted, in milliseconds", "least", "median", "most", "limit");
    measureScans(six);
    measureScans(history);
}

} // namespace vorn::bench
