#include "Platform/HTTP/StallWatch.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr int noSocket = -1; ///< on which no bytes move
constexpr StallWatch::Time start{1h};

TEST(StallWatch, FindsAStallOnceItLastsForTheLimit)
{
    StallWatch watch(10s);
    watch.begin(start);
    EXPECT_FALSE(watch.isStalled(noSocket, start));
    EXPECT_FALSE(watch.isStalled(noSocket, start + 10s - 1ms));
    EXPECT_TRUE(watch.isStalled(noSocket, start + 10s));
}

TEST(StallWatch, CountsFromTheLookThatFoundAMove)
{
    StallWatch watch(10s);
    watch.begin(start);
    watch.note(0, 1);
    EXPECT_FALSE(watch.isStalled(noSocket, start + 8s));
    EXPECT_FALSE(watch.isStalled(noSocket, start + 18s - 1ms));
    EXPECT_TRUE(watch.isStalled(noSocket, start + 18s));
}

TEST(StallWatch, CountsAnewFromTheRequest)
{
    StallWatch watch(10s);
    watch.begin(start);
    watch.beginRequest(noSocket, start + 9s);
    EXPECT_FALSE(watch.isStalled(noSocket, start + 18s));
    EXPECT_TRUE(watch.isStalled(noSocket, start + 19s));
}

TEST(StallWatch, LooksOftenEnoughForItsLimit)
{
    for (const auto& [limit, pause] : {std::pair(16ms, 2ms), std::pair(120'000ms, 250ms)}) {
        StallWatch watch(limit);
        watch.begin(start);
        EXPECT_EQ(watch.nextLook(), start);
        watch.isStalled(noSocket, start);
        EXPECT_EQ(watch.nextLook(), start + pause);
        EXPECT_FALSE(watch.isStalled(noSocket, start + pause - 1ms)) << "too early to look";
    }
}

} // namespace
} // namespace vorn
