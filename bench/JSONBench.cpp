#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "bench/SampleExport.h"

#include <benchmark/benchmark.h>

namespace {

/// The messages document; the records of 400,000 are far larger than the caches. Goal: 1 GB/s of JSON on one core.
void messagesJSON(benchmark::State& state)
{
    const auto result = vorn::bench::sampleExport(static_cast<std::size_t>(state.range(0)));
    std::size_t size = 0;
    while (state.KeepRunning()) {
        const vorn::ByteBuffer json = vorn::NimbrelArchiveBuilder::messagesJSON(result);
        benchmark::DoNotOptimize(json.data());
        size = json.size();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
    state.counters["bytes_a_message"] = static_cast<double>(size) / static_cast<double>(state.range(0));
}
BENCHMARK(messagesJSON)->Arg(1'000)->Arg(400'000)->Unit(benchmark::kMillisecond);

} // namespace
