#include "bench/Table.h"

#include <gtest/gtest.h>

namespace vorn::bench {
namespace {

using ::testing::internal::CaptureStdout;
using ::testing::internal::GetCapturedStdout;

TEST(BenchTable, SaysOfEachGoalWhetherItIsReached)
{
    CaptureStdout();
    Table table("Frames", {"Median"});
    table.add("a bare window", {"1.00 ms"});
    table.add("a fade", {"8.00 ms"}, {.figure = 8, .limit = 8, .text = "8 ms"});
    EXPECT_TRUE(table.isReached());
    table.add("a slow fade", {"8.01 ms"}, {.figure = 8.01, .limit = 8, .text = "8 ms"});
    table.add("a bar", {"2.00 ms"}, {.figure = 2, .limit = 8, .text = "8 ms"});
    EXPECT_FALSE(table.isReached()) << "a goal reached after one that was missed";
    EXPECT_EQ(GetCapturedStdout(), "| Frames | Median | Reach | Reached |\n"
                                   "| --- | --- | --- | --- |\n"
                                   "| a bare window | 1.00 ms | – | – |\n"
                                   "| a fade | 8.00 ms | 8 ms | yes |\n"
                                   "| a slow fade | 8.01 ms | 8 ms | NO |\n"
                                   "| a bar | 2.00 ms | 8 ms | yes |\n");
}

TEST(BenchTable, WritesFiguresWithTheirUnits)
{
    EXPECT_EQ(figure(1.005, "ms"), "1.00 ms");
    EXPECT_EQ(figure(1.25, "", 1), "1.2");
    EXPECT_EQ(figure(3, "MiB", 0), "3 MiB");
}

TEST(BenchTable, TakesTheMiddleOfWhatWasMeasured)
{
    EXPECT_EQ(median({3}), 3);
    EXPECT_EQ(median({9, 1, 3}), 3);
    EXPECT_EQ(median({4, 9, 1, 3}), 4) << "the upper one of two";
}

} // namespace
} // namespace vorn::bench
