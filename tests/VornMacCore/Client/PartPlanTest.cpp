#include "VornMacCore/Client/PartPlan.h"

#include <array>
#include <limits>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

namespace vorn {

void PrintTo(const PartPlan::Range& range, std::ostream* out)
{
    *out << "[" << range.begin << ", " << range.end << ")";
}

void PrintTo(const PartPlan::Window& window, std::ostream* out)
{
    *out << window.count << " from " << window.first;
}

namespace {

constexpr std::int64_t eightMiB = 8'388'608;
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

TEST(PartPlan, CutsIntoEightMebibytesAndAsksForFiftyURLs)
{
    EXPECT_EQ(PartPlan::defaultPartSize, eightMiB);
    EXPECT_EQ(PartPlan::windowSize, 50);
}

TEST(PartPlan, CountsAnUnfinishedPartAndAtLeastOne)
{
    struct Case {
        const char* name;
        std::int64_t total, part, count;
    };
    constexpr std::array cases{
        Case{"an empty file is one empty part", 0, eightMiB, 1},
        Case{"one byte", 1, eightMiB, 1},
        Case{"one byte short of a part", eightMiB - 1, eightMiB, 1},
        Case{"exactly one part", eightMiB, eightMiB, 1},
        Case{"one byte more than a part", eightMiB + 1, eightMiB, 2},
        Case{"exactly two parts", 2 * eightMiB, eightMiB, 2},
        Case{"parts of one byte", 120, 1, 120},
        Case{"the largest size", largest, eightMiB, largest / eightMiB + 1},
        Case{"the largest size as one part", largest, largest, 1},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(PartPlan(each.total, each.part).partCount(), each.count);
    }
}

TEST(PartPlan, TakesImpossibleSizesForTheNearestPossible)
{
    EXPECT_EQ(PartPlan(-1, 10), PartPlan(0, 10));
    EXPECT_EQ(PartPlan(std::numeric_limits<std::int64_t>::min(), 10).totalSize, 0);
    EXPECT_EQ(PartPlan(10, 0), PartPlan(10, 1));
    EXPECT_EQ(PartPlan(10, -5).partSize, 1);
    EXPECT_NE(PartPlan(10, 1), PartPlan(10, 2));
    EXPECT_NE(PartPlan(10, 1), PartPlan(11, 1));
}

TEST(PartPlan, RangesCoverTheFileWithoutGapOrOverlap)
{
    for (const std::int64_t total : {std::int64_t{1}, eightMiB, eightMiB + 1, 3 * eightMiB - 1, 20 * eightMiB}) {
        SCOPED_TRACE(total);
        const PartPlan plan(total, eightMiB);
        std::int64_t end = 0;
        for (std::int64_t part = 1; part <= plan.partCount(); ++part) {
            EXPECT_EQ(plan.range(part).begin, end);
            EXPECT_GT(plan.range(part).length(), 0);
            EXPECT_LE(plan.range(part).length(), eightMiB);
            end = plan.range(part).end;
        }
        EXPECT_EQ(end, total);
    }
}

TEST(PartPlan, TheLastRangeEndsWithTheFile)
{
    EXPECT_EQ(PartPlan(0, eightMiB).range(1), (PartPlan::Range{0, 0}));
    EXPECT_EQ(PartPlan(eightMiB, eightMiB).range(1), (PartPlan::Range{0, eightMiB}));
    EXPECT_EQ(PartPlan(eightMiB + 1, eightMiB).range(2), (PartPlan::Range{eightMiB, eightMiB + 1}));
    const PartPlan vast(largest, eightMiB);
    EXPECT_EQ(vast.range(vast.partCount()).end, largest);
}

TEST(PartPlan, WindowsHoldFiftyPartsAndTheLastOneTheRest)
{
    const PartPlan plan(120, 1);
    EXPECT_EQ(plan.window(1), (PartPlan::Window{1, 50}));
    EXPECT_EQ(plan.window(51), (PartPlan::Window{51, 50}));
    EXPECT_EQ(plan.window(71), (PartPlan::Window{71, 50}));
    EXPECT_EQ(plan.window(72), (PartPlan::Window{72, 49}));
    EXPECT_EQ(plan.window(101), (PartPlan::Window{101, 20}));
    EXPECT_EQ(plan.window(120), (PartPlan::Window{120, 1}));
    EXPECT_EQ(PartPlan(0, 1).window(1), (PartPlan::Window{1, 1}));
}

} // namespace
} // namespace vorn
