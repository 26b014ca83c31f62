#include "VornMacCore/Wire/WireDate.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono;

constexpr Instant spring = sys_days(2026y / March / 1) + 9h + 15min;

TEST(WireDate, ReadsATimeWithAndWithoutAFraction)
{
    EXPECT_EQ(WireDate::parse("2026-03-01T09:15:00Z"), spring);
    EXPECT_EQ(WireDate::parse("2026-03-01T09:15:00.000Z"), spring);
    EXPECT_EQ(WireDate::parse("2026-03-01T09:15:00.25Z"), spring + 250ms);
    EXPECT_EQ(WireDate::parse("2026-03-01T09:15:00.123456789Z"), spring + 123ms);
}

TEST(WireDate, ReadsEveryTimeZone)
{
    EXPECT_EQ(WireDate::parse("2026-03-01T10:15:00+01:00"), spring);
    EXPECT_EQ(WireDate::parse("2026-02-28T23:15:00.5-10:00"), spring + 500ms);
    EXPECT_EQ(WireDate::parse("2026-03-01T09:15:00+00:00"), spring);
}

TEST(WireDate, IsAbsentForAbsentText)
{
    EXPECT_EQ(WireDate::parse(std::nullopt), std::nullopt);
}

TEST(WireDate, IsAbsentForEveryOtherForm)
{
    for (const char* text :
         {"", "2026-03-01", "2026-03-01T09:15:00", "2026-03-01T09:15Z", "20260301T091500Z", "2026-03-01 09:15:00Z",
          "2026-03-01t09:15:00Z", "2026-03-01T09:15:00z", "2026-03-01T09:15:00.Z", "2026-03-01T09:15:00+0100",
          " 2026-03-01T09:15:00Z", "2026-03-01T09:15:00Z ", "2026-02-30T09:15:00Z", "1772356500", "tomorrow"}) {
        EXPECT_EQ(WireDate::parse(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace vorn
