#include "Platform/Async/MainContext.h"
#include "Platform/Async/Suspend.h"

#include <cstdint>

#include <benchmark/benchmark.h>

namespace vorn {
namespace {

/// Suspends `rounds` times for an answer that is there at once: each answer passes through the context's queue once.
Async<> roundTrips(std::int64_t rounds)
{
    for (std::int64_t round = 0; round < rounds; ++round) {
        co_await suspend<void>([](const Resume<void>& resume) -> CancelAction {
            resume();
            return {};
        });
    }
}

void suspendAndResume(benchmark::State& state)
{
    constexpr std::int64_t rounds = 1000;
    MainContext context;
    for (auto _ : state) context.run(roundTrips(rounds));
    state.SetItemsProcessed(state.iterations() * rounds); // the inverse is the time of one round trip
}
BENCHMARK(suspendAndResume);

Async<int> value()
{
    co_return 1;
}

Async<int> awaitMany(int count)
{
    int sum = 0;
    for (int i = 0; i < count; ++i) sum += co_await value();
    co_return sum;
}

void awaitOfACoroutineThatNeverWaits(benchmark::State& state)
{
    constexpr int count = 1000;
    MainContext context;
    for (auto _ : state) benchmark::DoNotOptimize(context.run(awaitMany(count)));
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(awaitOfACoroutineThatNeverWaits);

void startAndEndATask(benchmark::State& state)
{
    MainContext context;
    for (auto _ : state) {
        Task::detached(context, roundTrips(0));
        context.runUntilIdle();
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(startAndEndATask);

} // namespace
} // namespace vorn
