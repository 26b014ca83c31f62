#include "NimbrelExportKit/Archive/Deflate.h"
#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Archive/ZipWriter.h"
#include "bench/SampleExport.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

namespace {

constexpr std::size_t messageCount = 100'000;

const vorn::ByteBuffer& sampleDocument()
{
    static const vorn::ByteBuffer document =
        vorn::NimbrelArchiveBuilder::messagesJSON(vorn::bench::sampleExport(messageCount));
    return document;
}

/// The peer: zlib at its default level, raw, in one call.
std::size_t zlibLevel6(vorn::ByteView data, std::span<std::byte> room)
{
    z_stream stream{};
    if (deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) return 0;
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    const bool ended = deflate(&stream, Z_FINISH) == Z_STREAM_END;
    const std::size_t size = room.size() - stream.avail_out;
    deflateEnd(&stream);
    return ended ? size : 0;
}

std::size_t zlibSize()
{
    vorn::ByteBuffer room(sampleDocument().size());
    static const std::size_t size = zlibLevel6(sampleDocument(), room);
    return size;
}

void report(benchmark::State& state, std::size_t size)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(sampleDocument().size()) * state.iterations());
    state.counters["of_zlib6_size"] = static_cast<double>(size) / static_cast<double>(zlibSize());
    state.counters["of_document"] = static_cast<double>(size) / static_cast<double>(sampleDocument().size());
}

void runEncoder(benchmark::State& state, const vorn::DeflateEncoder& encoder)
{
    vorn::ByteBuffer room(sampleDocument().size());
    std::size_t size = 0;
    while (state.KeepRunning()) size = encoder(sampleDocument(), room);
    report(state, size);
}

void zlib6(benchmark::State& state)
{
    runEncoder(state, zlibLevel6);
}
BENCHMARK(zlib6)->Unit(benchmark::kMillisecond);

/// Goal: at most 1.02 times zlib's size, in 0.4 times its time.
void ours(benchmark::State& state)
{
    runEncoder(state, vorn::libdeflateEncoder());
}
BENCHMARK(ours)->Unit(benchmark::kMillisecond);

/// With the result read back.
void oursChecked(benchmark::State& state)
{
    const vorn::CheckedDeflate deflate(vorn::libdeflateEncoder());
    vorn::ByteBuffer room(sampleDocument().size());
    std::size_t size = 0;
    while (state.KeepRunning()) size = deflate.compress(sampleDocument(), room).value_or(0);
    report(state, size);
}
BENCHMARK(oursChecked)->Unit(benchmark::kMillisecond);

/// The whole archive, checksum included.
void archive(benchmark::State& state)
{
    const vorn::ZipEntry entry{"vorn-nimbrel-messages.json", sampleDocument()};
    std::size_t size = 0;
    while (state.KeepRunning()) size = vorn::ZipWriter::archive({&entry, 1}).size();
    report(state, size);
}
BENCHMARK(archive)->Unit(benchmark::kMillisecond);

} // namespace
