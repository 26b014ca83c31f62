#include "bench/Table.h"
#include "bench/Window/BareWindow.h"
#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <string>
#include <variant>
#include <vector>

namespace vorn::bench {
namespace {

using namespace std::chrono_literals;

constexpr int batches = 3;
constexpr int rounds = 4;    // there and back, in each batch
constexpr auto fade = 400ms; // with a pause after it

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

/// The frames of one animation, batch by batch.
struct Moving {
    std::vector<std::vector<Frame>> batches;
    double longestTurn = 0; ///< of the main thread: drawing, or making the next screen

    void take(FrameWatch& watch)
    {
        batches.push_back(watch.take());
        longestTurn = std::max(longestTurn, TimedApplication::shared().takeLongestTurn());
    }

    /// The times of all frames.
    std::vector<double> sorted() const
    {
        std::vector<double> all;
        for (const auto& batch : batches) std::ranges::copy(wallTimes(batch), std::back_inserter(all));
        std::ranges::sort(all);
        return all;
    }

    /// The median of the batches' longest frames: a frame that is always long is in every batch, one that another
    /// program delayed is not.
    double usualLongest() const
    {
        std::vector<double> longest;
        for (const auto& batch : batches) longest.push_back(std::ranges::max(wallTimes(batch)));
        return median(longest);
    }

    /// The most CPU time that any frame took, in milliseconds.
    double mostCPU() const
    {
        double most = 0;
        for (const auto& batch : batches) most = std::max(most, std::ranges::max(batch, {}, &Frame::cpu).cpu);
        return most;
    }
};

std::vector<std::string> figuresOf(const Moving& moving)
{
    const std::vector<double> frames = moving.sorted();
    return {std::to_string(frames.size()),
            figure(percentile(frames, 0.5), "ms"),
            figure(percentile(frames, 0.95), "ms"),
            figure(moving.usualLongest(), "ms"),
            figure(frames.back(), "ms"),
            figure(moving.mostCPU(), "ms"),
            figure(moving.longestTurn, "ms")};
}

void add(Table& table, const char* name, const Moving& moving)
{
    table.add(name, figuresOf(moving),
              {std::max(moving.usualLongest(), moving.mostCPU()), 8, "8 ms, middle batch and CPU of all"});
}

void measureBareWindow(Table& table)
{
    BareWindow bare;
    TimedApplication::runFor(fade);
    FrameWatch watch(bare.window());
    TimedApplication::shared().takeLongestTurn();
    bare.fade();
    Moving moving;
    for (int batch = 0; batch < batches; ++batch) {
        TimedApplication::runFor(2 * rounds * fade);
        moving.take(watch);
    }
    table.add("a bare window, fading", figuresOf(moving));
}

void measureFade(Table& table, BenchWindow& bench, const Pair& pair)
{
    bench.model().go(pair.from);
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::shared().takeLongestTurn();
    Moving moving;
    for (int batch = 0; batch < batches; ++batch) {
        for (int round = 0; round < rounds; ++round) {
            for (const Step step : {pair.to, pair.from}) {
                TimedApplication::inTurn([&bench, step] { bench.model().go(step); });
                TimedApplication::runFor(fade);
            }
        }
        moving.take(watch);
    }
    add(table, pair.name, moving);
}

/// From the first byte that is sent to the last.
void measureProgress(Table& table, BenchWindow& bench)
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
    Moving moving;
    moving.take(watch);
    add(table, "the bar of the upload", moving);
    bench.runUntil(Step::done);
}

/// The shimmer over the placeholder of a chat while the service's answer is pending.
void measureShimmer(Table& table, const std::filesystem::path& history)
{
    BenchWindow bench({.history = history, .service = {.questTakes = 1h}});
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::shared().takeLongestTurn();
    TimedApplication::runFor(5s);
    Moving moving;
    moving.take(watch);
    add(table, "the shimmer of a search", moving);
}

/// From the approval until the last particle has fallen.
void measureMoment(Table& table, const std::filesystem::path& history)
{
    BenchWindow bench({.history = history, .service = {.approves = true}});
    bench.runUntilFound();
    bench.model().upload();
    bench.runUntil(Step::done);
    TimedApplication::runFor(fade);
    FrameWatch watch(bench.window());
    TimedApplication::runUntil([&] { return bench.model().submission()->status.isFinal(); });
    watch.take(); // drops the spinner's frames
    TimedApplication::shared().takeLongestTurn();
    TimedApplication::runFor(2s);
    Moving moving;
    moving.take(watch);
    add(table, "the moment of a reward", moving);
}

} // namespace

bool measureFrames(const std::filesystem::path& history)
{
    Table table("What moves", {"Frames", "Median", "95 of 100", "Longest, middle batch", "Longest of all", "Most CPU",
                               "Longest turn"});
    measureBareWindow(table);
    {
        BenchWindow bench({.history = history});
        bench.runUntilFound();
        for (const Pair& pair : pairs) measureFade(table, bench, pair);
        measureProgress(table, bench);
    }
    measureShimmer(table, history);
    measureMoment(table, history);
    return table.isReached();
}

} // namespace vorn::bench
