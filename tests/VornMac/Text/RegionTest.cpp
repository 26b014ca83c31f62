#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/StatisticsText.h"
#include "VornMac/Text/UploadText.h"
#include "VornMacCore/Wire/RewardFormat.h"
#include "tests/support/ScopedEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The texts are English everywhere, and so are their numbers; only days follow the user's region.
namespace vorn {
namespace {

struct Region {
    const char* locale;
    const char* first; ///< a day in March
    const char* last;  ///< and one in November
};

const Region regions[] = {
    {"en_US.UTF-8", "Mar 4, 2025", "Nov 30, 2026"},
    {"de_DE.UTF-8", "04.03.2025", "30.11.2026"},
    {"ja_JP.UTF-8", "2025/03/04", "2026/11/30"},
    {"hi_IN.UTF-8", "4 मार्च 2025", "30 नव॰ 2026"},
    {"ar_EG.UTF-8", "٠٤\u200f/٠٣\u200f/٢٠٢٥", "٣٠\u200f/١١\u200f/٢٠٢٦"},
};

class Regions : public ::testing::TestWithParam<Region> {
protected:
    const Instant first_ = std::chrono::sys_days(std::chrono::year(2025) / 3 / 4);
    const Instant last_ = std::chrono::sys_days(std::chrono::year(2026) / 11 / 30);

private:
    testing::ScopedEnvironment zone_{"TZ", "UTC"};
    testing::ScopedEnvironment locale_{"LC_ALL", GetParam().locale};
};

TEST_P(Regions, WriteTheDays)
{
    const std::string first = GetParam().first;
    const std::string last = GetParam().last;
    NimbrelExportStats stats({}, MessageList{});
    stats.firstAt = first_;
    stats.lastAt = last_;
    EXPECT_EQ(datesText(stats), first + " – " + last);
    const QuestAvailability cooldown{QuestAvailability::Cooldown{last_}};
    EXPECT_EQ(availabilityNote(cooldown).text, "Paid. You can upload again on " + last + ".");
    EXPECT_THAT(questLines({{}, {}, cooldown}),
                ::testing::ElementsAre("Upload again on " + last + " with your newer chats."));
}

TEST_P(Regions, ChangeNothingElse)
{
    EXPECT_EQ(countText(1'234'567), "1,234,567");
    EXPECT_EQ(percentText(0.425), "42 percent");
    EXPECT_EQ(clockText(118), "1:58");
    EXPECT_EQ(RewardFormat::usd(1234.5), "$1234.50");
}

INSTANTIATE_TEST_SUITE_P(Text, Regions, ::testing::ValuesIn(regions),
                         [](const auto& info) { return std::string(info.param.locale).substr(0, 2); });

} // namespace
} // namespace vorn
