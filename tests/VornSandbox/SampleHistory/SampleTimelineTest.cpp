#include "VornSandbox/SampleHistory/SampleTimeline.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

constexpr std::int64_t until = 794'049'300; // 2026-03-01T09:15:00Z since 2001
constexpr std::int64_t second = 1'000'000'000;
constexpr std::int64_t day = 86'400 * second;

TEST(SampleTimeline, GrowsStrictlyAndEndsInTime)
{
    for (const std::int64_t rows : {1, 7, 5'000, 400'000}) {
        SCOPED_TRACE(rows);
        SampleTimeline timeline(9, rows, until);
        std::int64_t first = 0;
        std::int64_t last = 0;
        for (std::int64_t row = 0; row < rows; ++row) {
            const auto [date, beginsSession] = timeline.next();
            ASSERT_GT(date, last);
            ASSERT_EQ(date % 1'000'000, 0) << "a fraction beyond milliseconds could round up to the next second";
            if (row == 0) {
                first = date;
                EXPECT_TRUE(beginsSession);
            }
            last = date;
        }
        EXPECT_LE(last, until * second);
        EXPECT_GT(last, (until - 300) * second);
        EXPECT_LE(last - first, std::int64_t{9} * 365 * day);
        if (rows >= 5'000) EXPECT_GT(last - first, 45 * day) << "months of messages";
    }
}

TEST(SampleTimeline, StopsMeasuringWhenCancelled)
{
    CancelFlag raised;
    raised.cancel();
    EXPECT_THROW(SampleTimeline(9, 5'000, until, &raised), Cancelled);
    const CancelFlag calm;
    EXPECT_EQ(SampleTimeline(9, 5'000, until, &calm).next().date, SampleTimeline(9, 5'000, until).next().date);
}

} // namespace
} // namespace vorn
