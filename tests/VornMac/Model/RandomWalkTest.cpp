#include "tests/VornMac/Model/RandomWalk.h"

#include <cstdlib>
#include <numeric>

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr std::size_t usualWalks = 700;
constexpr int actionsPerWalk = 60;

/// The seed in VORN_WALK_SEED; without that, as many as VORN_WALKS says, always the same.
std::vector<std::uint64_t> seeds()
{
    if (const char* given = std::getenv("VORN_WALK_SEED")) return {std::stoull(given)};
    const char* count = std::getenv("VORN_WALKS");
    std::vector<std::uint64_t> result(count != nullptr ? std::stoul(count) : usualWalks);
    std::iota(result.begin(), result.end(), 1);
    return result;
}

std::string numbered(const std::vector<std::string>& lines)
{
    std::string text;
    for (std::size_t line = 0; line < lines.size(); ++line)
        text += std::to_string(line + 1) + ". " + lines[line] + "\n";
    return text;
}

TEST(RandomWalk, KeepsEveryPromise)
{
    for (const auto seed : seeds()) {
        SCOPED_TRACE("VORN_WALK_SEED=" + std::to_string(seed));
        testing::RandomWalk walk(seed);
        const auto broken = walk.run(actionsPerWalk);
        ASSERT_TRUE(broken.empty() && !::testing::Test::HasFailure())
            << "after\n"
            << numbered(walk.journal()) << "these do not hold:\n"
            << numbered(broken);
    }
}

} // namespace
} // namespace vorn
