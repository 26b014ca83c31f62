#include "bench/Window/BareWindow.h"
#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <variant>
#include <vector>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;

constexpr int rounds = 10;   // there and back
constexpr auto fade = 400ms; // and a rest

struct Pair {
    const char* name;
    Step from, to;
};

constexpr Pair pairs[] = {
    {"link - consent", Step::link, Step::consent}, {"consent - access", Step::consent, Step::access},
    {"access - find", Step::access, Step::find},   {"find - upload", Step::find, Step::upload},
    {"upload - done", Step::upload, Step::done},
};

double percentile(const std::vector<double>& sorted, double part)
{
    return sorted[static_cast<std::size_t>(part * static_cast<double>(sorted.size() - 1))];
}

/// `longestTurn` is that of the main thread, whatever it did: drawing, or making the next screen.
void print(const char* name, std::vector<double> frames, double longestTurn, const char* limit = "8 ms a frame")
{
    std::ranges::sort(frames);
    std::printf("%-34s %6zu %8.2f %8.2f %8.2f %8.2f   %s\n", name, frames.size(), percentile(frames, 0.5),
                percentile(frames, 0.95), frames.back(), longestTurn, limit);
    std::fflush(stdout);
}

void measureBareWindow()
{
    BareWindow bare;
    TimedApplication::runFor(fade);
    FrameWatch watch(bare.window());
    TimedApplication::shared().takeLongestTurn();
    bare.fade();
    TimedApplication::runFor(2 * rounds * fade);
    print("a bare window, fading", watch.take(), TimedApplication::shared().takeLongestTurn(), "");
}

void measureFade(BenchWindow& bench, const Pair& pair)
{
    bench.model().go(pair.from);
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::shared().takeLongestTurn();
    for (int round = 0; round < rounds; ++round) {
        for (const Step step : {pair.to, pair.from}) {
            TimedApplication::inTurn([&bench, step] { bench.model().go(step); });
            TimedApplication::runFor(fade);
        }
    }
    print(pair.name, watch.take(), TimedApplication::shared().takeLongestTurn());
}

/// From the first byte that is sent to the last.
void measureProgress(BenchWindow& bench)
{
    bench.model().go(Step::find);
    bench.runUntilFound();
    bench.model().upload();
    const auto isUploading = [&] { return std::holds_alternative<phase::Uploading>(bench.model().uploadPhase()); };
    TimedApplication::runUntil(isUploading);
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::shared().takeLongestTurn();
    TimedApplication::runUntil([&] { return !isUploading(); });
    print("the bar of the upload", watch.take(), TimedApplication::shared().takeLongestTurn());
    bench.runUntil(Step::done);
}

/// The light over the shape of a chat, while the quest lets itself be waited for.
void measureShimmer(const std::filesystem::path& history)
{
    BenchWindow bench({.history = history, .service = {.questTakes = 1h}});
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::shared().takeLongestTurn();
    TimedApplication::runFor(5s);
    print("the shimmer of a search", watch.take(), TimedApplication::shared().takeLongestTurn());
}

/// From the approval until the last paper has fallen.
void measureMoment(const std::filesystem::path& history)
{
    BenchWindow bench({.history = history, .service = {.approves = true}});
    bench.runUntilFound();
    bench.model().upload();
    bench.runUntil(Step::done);
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::runUntil([&] { return bench.model().submission()->status.isFinal(); });
    watch.take(); // of the spinner
    TimedApplication::shared().takeLongestTurn();
    TimedApplication::runFor(2s);
    print("the moment of a reward", watch.take(), TimedApplication::shared().takeLongestTurn());
}

} // namespace

void measureFrames(const std::filesystem::path& history)
{
    std::printf("%-34s %6s %8s %8s %8s %8s   %s\n", "what moves, in milliseconds", "frames", "median", "95 of 100",
                "longest", "turn", "limit");
    measureBareWindow();
    {
        BenchWindow bench({.history = history});
        bench.runUntilFound();
        for (const Pair& pair : pairs) measureFade(bench, pair);
        measureProgress(bench);
    }
    measureShimmer(history);
    measureMoment(history);
}

} // namespace vorn::bench
