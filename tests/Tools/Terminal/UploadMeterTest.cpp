#include "Tools/Terminal/UploadMeter.h"
#include "Platform/Base/Text.h"
#include "Tools/Terminal/UploadDisplay.h"
#include "tests/Tools/Terminal/SaidLines.h"
#include "tests/support/async/ManualClock.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr std::int64_t megabyte = 1'000'000;

UploadMeter steady(std::int64_t bytesASecond, int seconds, std::int64_t total)
{
    UploadMeter meter;
    for (int second = 0; second <= seconds; ++second) {
        meter.update({second * bytesASecond, total}, std::chrono::seconds(second));
    }
    return meter;
}

TEST(UploadMeter, SaysHowMuchHowFastAndHowLong)
{
    EXPECT_EQ(steady(2 * megabyte, 3, 10 * megabyte).line(80),
              "[████████████░░░░░░░░] 60 %  6.0 of 10.0 MB  2.0 MB/s  2 s left");
    EXPECT_EQ(steady(2 * megabyte, 3, 10 * megabyte).plainLine(), "60 %  6.0 of 10.0 MB  2.0 MB/s");
}

TEST(UploadMeter, SaysLongTimesInMinutesAndHours)
{
    struct Case {
        std::int64_t total;
        const char* left;
    };
    for (const Case each : {Case{62, "59 s left"}, Case{63, "1:00 min left"}, Case{128, "2:05 min left"},
                            Case{3603 + 720, "1:12 h left"}}) {
        EXPECT_TRUE(steady(megabyte, 3, each.total * megabyte).line(80).ends_with(each.left))
            << steady(megabyte, 3, each.total * megabyte).line(80);
    }
}

TEST(UploadMeter, GuessesNothingFromTooLittle)
{
    UploadMeter meter;
    EXPECT_EQ(meter.rate(), std::nullopt);
    meter.update({0, 10 * megabyte}, 0ms);
    meter.update({megabyte, 10 * megabyte}, 400ms);
    EXPECT_EQ(meter.rate(), std::nullopt);
    EXPECT_EQ(meter.line(80), "[██░░░░░░░░░░░░░░░░░░] 10 %  1.0 of 10.0 MB");
}

TEST(UploadMeter, ForgetsHowFastItUsedToBe)
{
    UploadMeter meter = steady(10 * megabyte, 10, 1000 * megabyte);
    for (int second = 11; second <= 30; ++second) {
        meter.update({100 * megabyte + (second - 10) * megabyte, 1000 * megabyte}, std::chrono::seconds(second));
    }
    EXPECT_DOUBLE_EQ(meter.rate().value(), 1.0 * megabyte);
}

TEST(UploadMeter, SaysNoTimeWhenNothingMoves)
{
    UploadMeter meter = steady(0, 10, 10 * megabyte);
    EXPECT_EQ(meter.line(80), "[░░░░░░░░░░░░░░░░░░░░] 0 %  0.0 of 10.0 MB  0 bytes/s");
}

TEST(UploadMeter, BeginsAnewWhenAPartIsSentAgain)
{
    UploadMeter meter = steady(megabyte, 8, 100 * megabyte);
    meter.update({4 * megabyte, 100 * megabyte}, 9s);
    EXPECT_EQ(meter.percent(), 4);
    EXPECT_EQ(meter.rate(), std::nullopt);
}

TEST(UploadMeter, SaysAHundredOnlyAtTheEnd)
{
    UploadMeter meter;
    meter.update({999'999'999, 1'000'000'000}, 0s);
    EXPECT_EQ(meter.percent(), 99);
    meter.update({1'000'000'000, 1'000'000'000}, 1s);
    EXPECT_EQ(meter.percent(), 100);
    meter.update({0, 0}, 2s);
    EXPECT_EQ(meter.percent(), 0);
}

TEST(UploadMeter, CountsSmallArchivesInSmallUnits)
{
    struct Case {
        std::int64_t sent;
        std::int64_t total;
        const char* text;
    };
    for (const Case& each :
         {Case{0, 0, "0 %  0 of 0 bytes"}, Case{1, 1, "100 %  1 of 1 byte"}, Case{500, 999, "50 %  500 of 999 bytes"},
          Case{273'100, 546'215, "49 %  273.1 of 546.2 kB"}, Case{999'949, 999'949, "100 %  999.9 of 999.9 kB"},
          Case{999'950, 999'950, "100 %  1.0 of 1.0 MB"}, Case{1000, 9'000'000, "0 %  0.0 of 9.0 MB"}}) {
        UploadMeter meter;
        meter.update({each.sent, each.total}, 0s);
        EXPECT_EQ(meter.plainLine(), each.text);
    }
}

TEST(UploadMeter, FitsIntoAnyWindow)
{
    for (const std::int64_t rate : {1LL, 3'000LL, 99'999'999'999LL}) {
        const UploadMeter meter = steady(rate, 3, 999'999'999'999);
        for (int columns = 6; columns <= 120; ++columns) {
            const std::string line = meter.line(columns);
            EXPECT_LT(text::scalars(line).size(), static_cast<std::size_t>(columns)) << line;
        }
    }
}

TEST(UploadMeter, LeavesOutWhatANarrowWindowHasNoRoomFor)
{
    const UploadMeter meter = steady(2 * megabyte, 3, 10 * megabyte);
    struct Case {
        int columns;
        const char* line;
    };
    for (const Case& each : {Case{64, "[████████████░░░░░░░░] 60 %  6.0 of 10.0 MB  2.0 MB/s  2 s left"},
                             Case{63, "60 %  6.0 of 10.0 MB  2.0 MB/s  2 s left"},
                             Case{40, "60 %  6.0 of 10.0 MB  2.0 MB/s"}, Case{31, "60 %  6.0 of 10.0 MB  2.0 MB/s"},
                             Case{30, "60 %  6.0 of 10.0 MB"}, Case{10, "60 %"}, Case{1, "60 %"}}) {
        EXPECT_EQ(meter.line(each.columns), each.line) << each.columns;
    }
}

TEST(UploadDisplay, FollowsTheWindowsSize)
{
    testing::SaidLines said({.isTerminal = true});
    testing::ManualClock clock;
    UploadDisplay display(clock, said.terminal);
    for (const int columns : {80, 30}) {
        said.window.columns = columns;
        clock.advance(2s);
        display.show({5 * megabyte, 10 * megabyte});
    }
    EXPECT_EQ(said.take(), "\r\x1B[K[██████████░░░░░░░░░░] 50 %  5.0 of 10.0 MB\r\x1B[K50 %  5.0 of 10.0 MB");
}

TEST(UploadDisplay, SaysEachTenthOnceWhereNoLineCanChange)
{
    testing::SaidLines said;
    const testing::ManualClock clock;
    UploadDisplay display(clock, said.terminal);
    for (int percent = 0; percent <= 100; ++percent) {
        display.show({percent, 100});
    }
    const std::string text = said.take();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 10);
    EXPECT_TRUE(text.starts_with("10 %  ")) << text;
    EXPECT_NE(text.find("\n100 %  "), std::string::npos) << text;
}

} // namespace
} // namespace vorn
