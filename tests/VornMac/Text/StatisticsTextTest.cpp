#include "VornMac/Text/StatisticsText.h"
#include "tests/support/ScopedEnvironment.h"

#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace vorn {
namespace {

TEST(CountText, SetsThousandsApart)
{
    for (const auto& [count, text] : {
             std::pair<std::int64_t, const char*>(0, "0"),
             {7, "7"},
             {999, "999"},
             {1'000, "1,000"},
             {1'204, "1,204"},
             {55'000, "55,000"},
             {999'999, "999,999"},
             {1'000'000, "1,000,000"},
             {-999, "-999"},
             {-1'000, "-1,000"},
             {std::numeric_limits<std::int64_t>::max(), "9,223,372,036,854,775,807"},
         }) {
        EXPECT_EQ(countText(count), text);
    }
}

TEST(DatesText, NeedsBothDays)
{
    const testing::ScopedEnvironment zone("TZ", "UTC");
    const testing::ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    NimbrelExportStats stats({}, MessageList{});
    EXPECT_EQ(datesText(stats), "");
    stats.firstAt = std::chrono::sys_days(std::chrono::year(2025) / 12 / 31);
    EXPECT_EQ(datesText(stats), "");
    stats.lastAt = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1);
    EXPECT_EQ(datesText(stats), "Dec 31, 2025 – Mar 1, 2026");
    stats.firstAt.reset();
    EXPECT_EQ(datesText(stats), "");
}

TEST(StatisticsRows, HaveOneForTheDatesOnlyWhereBothAreKnown)
{
    const testing::ScopedEnvironment zone("TZ", "UTC");
    const testing::ScopedEnvironment language("LC_ALL", "en_US.UTF-8");
    NimbrelExportStats stats({}, MessageList{});
    stats.messageCount = 1290;
    stats.promptCount = 430;
    stats.replyCount = 860;
    std::vector<StatisticsRow> rows{{"Messages", "1,290"}, {"Your messages", "430"}, {"Nimbrel replies", "860"}};
    EXPECT_EQ(statisticsRows(stats), rows);
    stats.firstAt = std::chrono::sys_days(std::chrono::year(2025) / 12 / 31);
    EXPECT_EQ(statisticsRows(stats), rows);
    stats.lastAt = std::chrono::sys_days(std::chrono::year(2026) / 3 / 1);
    rows.push_back({"Dates", "Dec 31, 2025 – Mar 1, 2026"});
    EXPECT_EQ(statisticsRows(stats), rows);
}

} // namespace
} // namespace vorn
