#include "Platform/Base/Dates.h"
#include "tests/support/ScopedEnvironment.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono;
using testing::ScopedEnvironment;

constexpr Instant spring = sys_days(2026y / March / 1) + 9h + 15min;

TEST(InternetDateTime, IsWrittenInUTCWithoutFractions)
{
    EXPECT_EQ(internetDateTime(spring), "2026-03-01T09:15:00Z");
    EXPECT_EQ(internetDateTime(spring + 999ms), "2026-03-01T09:15:00Z");
    EXPECT_EQ(internetDateTime(Instant(-1ms)), "1969-12-31T23:59:59Z");
    EXPECT_EQ(internetDateTime(sys_days(3000y / December / 31)), "3000-12-31T00:00:00Z");
}

TEST(InternetDateTime, IgnoresTheUsersTimeZone)
{
    const ScopedEnvironment zone("TZ", "Asia/Tokyo");
    EXPECT_EQ(internetDateTime(spring), "2026-03-01T09:15:00Z");
}

TEST(InternetDateTime, ReadsWhatItWrites)
{
    EXPECT_EQ(parseInternetDateTime("2026-03-01T09:15:00Z"), spring);
    EXPECT_EQ(parseInternetDateTime("2026-03-01T09:15:00.25Z"), spring + 250ms);
    EXPECT_EQ(parseInternetDateTime("2026-03-01T09:15:00.1239999Z"), spring + 123ms);
    EXPECT_EQ(parseInternetDateTime("2026-03-01t10:45:00+01:30"), spring);
    EXPECT_EQ(parseInternetDateTime("2026-02-28T23:15:00-10:00"), spring);
    EXPECT_EQ(parseInternetDateTime("2016-12-31T23:59:60Z"), Instant(sys_days(2017y / January / 1)));
}

TEST(InternetDateTime, RefusesEverythingElse)
{
    for (const char* text :
         {"", "2026-03-01", "2026-03-01T09:15Z", "2026-03-01T09:15:00", "2026-13-01T09:15:00Z", "2026-02-29T09:15:00Z",
          "2026-03-01T24:00:00Z", "2026-03-01T09:60:00Z", "2026-03-01T09:15:61Z", "2026-03-01T09:15:00.Z",
          "2026-03-01T09:15:00Zx", "2026-03-01T09:15:00+24:00", "2026-03-01T09:15:00+01:60",
          "0000-01-01T00:00:00+01:00", "9999-12-31T23:59:59-01:00", " 2026-03-01T09:15:00Z", "tomorrow"}) {
        EXPECT_EQ(parseInternetDateTime(text), std::nullopt) << text;
    }
}

TEST(LocalTime, FollowsTheUsersTimeZone)
{
    const ScopedEnvironment zone("TZ", "America/New_York");
    EXPECT_EQ(localTime(spring), (CalendarTime{2026, 3, 1, 4, 15, 0}));
    const ScopedEnvironment other("TZ", "Asia/Kolkata");
    EXPECT_EQ(localTime(spring), (CalendarTime{2026, 3, 1, 14, 45, 0}));
}

TEST(DayText, IsOfTheUsersLanguageAndZone)
{
    const Instant newYear = std::chrono::sys_days(std::chrono::year(2026) / 1 / 1) + std::chrono::minutes(30);
    struct Case {
        const char* language;
        const char* zone;
        const char* text;
    };
    for (const auto& [language, zone, text] :
         {Case{"en_US.UTF-8", "UTC", "Jan 1, 2026"}, Case{"en_US.UTF-8", "America/New_York", "Dec 31, 2025"},
          Case{"en_GB.UTF-8", "UTC", "1 Jan 2026"}, Case{"de_DE.UTF-8", "Europe/Berlin", "01.01.2026"},
          Case{"ja_JP.UTF-8", "Asia/Tokyo", "2026/01/01"}, Case{"C", "UTC", "Jan 1, 2026"},
          Case{"nonsense", "No/Where", "Jan 1, 2026"}}) {
        SCOPED_TRACE(std::string(language) + " " + zone);
        const testing::ScopedEnvironment all("LC_ALL", language);
        const testing::ScopedEnvironment timeZone("TZ", zone);
        EXPECT_EQ(dayText(newYear), text);
    }
}

TEST(LocalDates, WriteDayAndTimeInTheUsersLanguageAndZone)
{
    const Instant newYear = std::chrono::sys_days(std::chrono::year(2026) / 1 / 1) + std::chrono::minutes(30);
    struct Case {
        const char* language;
        const char* zone;
        const char* day;
        const char* time;
    };
    for (const auto& [language, zone, day, time] :
         {Case{"en_US.UTF-8", "America/New_York", "Dec 31, 2025", "7:30:00\u202FPM"},
          Case{"de_DE.UTF-8", "Europe/Berlin", "01.01.2026", "01:30:00"},
          Case{"nonsense", "No/Where", "Jan 1, 2026", "00:30:00"}}) {
        SCOPED_TRACE(std::string(language) + " " + zone);
        const testing::ScopedEnvironment all("LC_ALL", language);
        const testing::ScopedEnvironment timeZone("TZ", zone);
        const LocalDates dates;
        EXPECT_EQ(dates.day(newYear), day);
        EXPECT_EQ(dates.time(newYear), time);
    }
}

} // namespace
} // namespace vorn
