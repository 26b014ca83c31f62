#include "bench/Table.h"
#include "bench/Window/BenchWindow.h"
#include "bench/Window/FrameWatch.h"
#include "bench/Window/Measures.h"
#include "bench/Window/TimedApplication.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace vorn::bench {
namespace {

using Steady = std::chrono::steady_clock;

constexpr int rounds = 7;

/// In milliseconds. Between `handled` and `frame`, the window waits for its turn to draw.
struct Figures {
    std::size_t messages = 0;
    std::vector<double> handled; ///< the turn in which the model changes, and everything shown with it
    std::vector<double> frame;
    std::vector<double> painted; ///< the whole time until it is on the screen
};

/// Uses a new window: in one that already shows the same, nothing would change.
void scan(const std::filesystem::path& history, Figures& figures)
{
    Steady::time_point changed;
    Steady::time_point handled;
    const auto note = [&] {
        changed = Steady::now();
        TimedApplication::inTurn([&handled] { handled = Steady::now(); });
    };
    BenchWindow bench({.history = history, .onModel = [&note](AppModel& model) {
                           QObject::connect(&model, &AppModel::exportResultChanged, &model, note);
                       }});
    bench.runUntilFound();
    FrameWatch frames(bench.window());
    TimedApplication::runUntil([&frames] { return frames.count() > 0; });
    figures.handled.push_back(milliseconds(handled - changed));
    figures.painted.push_back(milliseconds(frames.last() - changed));
    figures.frame.push_back(frames.take().front().wall);
    figures.messages = bench.model().exportResult()->messages.size();
}

std::string nameOf(const Figures& figures)
{
    return "preview of " + std::to_string(figures.messages);
}

std::vector<std::string> textsOf(const Figures& figures)
{
    return {figure(median(figures.handled), "ms"), figure(median(figures.frame), "ms"),
            figure(median(figures.painted), "ms")};
}

} // namespace

bool measurePreview(const std::filesystem::path& six, const std::filesystem::path& history)
{
    Figures few, many;
    for (int round = 0; round < rounds; ++round) {
        scan(six, few);
        scan(history, many);
    }
    Table table("What was found", {"Turn of the change", "Frame", "On the screen after"});
    table.add(nameOf(few), textsOf(few));
    table.add(nameOf(many), textsOf(many), {median(many.painted), 1.25 * median(few.painted), "1.25 × the few"});
    return table.isReached();
}

} // namespace vorn::bench
