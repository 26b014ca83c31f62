// Searches for texts that the link detector reads again and again. An input is the beginning of a text, a NUL, and the
// piece that the text repeats after it.
#include "NimbrelExportKit/Links/TextLinkDetector.h"
#include "fuzz/Require.h"
#include "tests/support/steps/StepCount.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::size_t longestPart = 32;
constexpr std::size_t textSize = 2048;
constexpr std::uint64_t mostStepsForAByte = 500;

/// One counter for each number of steps per byte: the fuzzer keeps an input that sets a new one.
__attribute__((section("__libfuzzer_extra_counters"))) std::array<std::uint8_t, mostStepsForAByte + 1> slowness;

std::uint64_t stepsToFindLinks(std::string_view head, std::string_view piece, std::size_t size)
{
    std::string text(head);
    while (text.size() < size) text += piece;
    std::vector<std::string> urls;
    return vorn::testing::stepsOf([&] { vorn::TextLinkDetector().find(text, urls); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = input.find('\0');
    if (end == std::string_view::npos) return -1;
    const std::string_view head = input.substr(0, end);
    const std::string_view piece = input.substr(end + 1);
    if (head.size() > longestPart || piece.size() > longestPart || piece.empty()) return -1;

    const std::uint64_t few = stepsToFindLinks(head, piece, textSize);
    const std::uint64_t many = stepsToFindLinks(head, piece, 8 * textSize);
    slowness[std::min(many / (8 * textSize), mostStepsForAByte)] = 1; // NOLINT: within its bounds
    vorn::require(many <= 12 * few, "eight times the text takes at most twelve times the steps");
    vorn::require(many <= mostStepsForAByte * 8 * textSize, "no byte is read hundreds of times");
    return 0;
}
