#include "VornMac/Text/TimeLeft.h"

#include <set>

#include <gtest/gtest.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using std::chrono::seconds;

constexpr std::int64_t megabyte = 1'000'000;

/// An upload of a hundred megabytes at a given rate in each second, with a report after each.
class Upload {
public:
    void goOn(int forSeconds, std::int64_t bytesASecond)
    {
        for (int second = 0; second < forSeconds; ++second) {
            now_ += 1s;
            sent_ += bytesASecond;
            timeLeft_.update({sent_, total}, now_);
            told_.push_back(timeLeft_.at(now_));
        }
    }
    std::optional<seconds> left() const { return timeLeft_.at(now_); }
    std::optional<seconds> leftAfter(TimeLeft::Time pause) const { return timeLeft_.at(now_ + pause); }
    const std::vector<std::optional<seconds>>& told() const { return told_; }

private:
    static constexpr std::int64_t total = 100 * megabyte;

    TimeLeft timeLeft_;
    TimeLeft::Time now_ = 1h; // of a clock that did not start with the upload
    std::int64_t sent_ = 0;
    std::vector<std::optional<seconds>> told_;
};

TEST(TimeLeft, IsNotKnownBeforeThereIsEnoughToGoBy)
{
    Upload upload;
    EXPECT_EQ(upload.left(), std::nullopt);
    upload.goOn(2, megabyte); // one second between the first report and the second
    EXPECT_EQ(upload.left(), std::nullopt);
    upload.goOn(1, megabyte);
    EXPECT_EQ(upload.left(), 97s);
}

TEST(TimeLeft, CountsDownBySecondsWhileTheUploadIsSteady)
{
    Upload upload;
    upload.goOn(99, megabyte);
    for (std::size_t second = 3; second < upload.told().size(); ++second)
        EXPECT_EQ(upload.told()[second].value(), upload.told()[second - 1].value() - 1s);
}

TEST(TimeLeft, DoesNotJumpWithANetworkThatDoes)
{
    Upload upload;
    for (int second = 0; second < 40; ++second) upload.goOn(1, second % 2 == 0 ? megabyte / 2 : 3 * megabyte / 2);
    std::set<seconds> ends;
    const auto& told = upload.told();
    for (std::size_t second = 5; second < told.size(); ++second) ends.insert(seconds(second) + told[second].value());
    EXPECT_EQ(ends.size(), 1U) << "one end is told, and kept to";
}

TEST(TimeLeft, FollowsANetworkThatHasBecomeAnother)
{
    Upload upload;
    upload.goOn(20, megabyte);
    EXPECT_EQ(upload.left(), 80s);
    upload.goOn(20, megabyte / 4);
    EXPECT_GT(upload.left(), 200s);
    upload.goOn(20, 2 * megabyte);
    EXPECT_LT(upload.left(), 30s);
}

TEST(TimeLeft, IsNotKnownWhileNothingMoves)
{
    Upload upload;
    upload.goOn(20, megabyte);
    EXPECT_EQ(upload.leftAfter(4s), 76s);
    EXPECT_EQ(upload.leftAfter(5s), std::nullopt);
    upload.goOn(4, 0);
    EXPECT_TRUE(upload.left());
    upload.goOn(1, 0);
    EXPECT_EQ(upload.left(), std::nullopt);
    upload.goOn(1, megabyte);
    EXPECT_TRUE(upload.left());
}

TEST(TimeLeft, BeginsAnewWhenAPartIsSentAgain)
{
    Upload upload;
    upload.goOn(20, megabyte);
    upload.goOn(1, -8 * megabyte);
    EXPECT_EQ(upload.left(), std::nullopt);
    upload.goOn(2, megabyte);
    EXPECT_EQ(upload.left(), 86s);
}

TEST(TimeLeft, IsNeverLessThanASecondNorLongerThanADay)
{
    Upload fast;
    fast.goOn(3, 50 * megabyte); // more than is left
    EXPECT_EQ(fast.left(), 1s);
    Upload slow;
    slow.goOn(10, 1000);
    EXPECT_EQ(slow.left(), std::nullopt);
}

TEST(TimeLeft, TakesThousandsOfReportsASecond)
{
    TimeLeft left;
    for (int millisecond = 0; millisecond <= 5000; ++millisecond)
        left.update({millisecond * 1000, 100 * megabyte}, std::chrono::milliseconds(millisecond));
    EXPECT_EQ(left.at(5s), 95s);
}

TEST(TimeLeftText, IsTheCoarserTheLonger)
{
    struct Case {
        seconds left;
        const char* text;
    };
    for (const Case& each :
         {Case{1s, "a few seconds left"}, Case{9s, "a few seconds left"}, Case{10s, "about 10 seconds left"},
          Case{14s, "about 10 seconds left"}, Case{15s, "about 20 seconds left"}, Case{54s, "about 50 seconds left"},
          Case{55s, "about a minute left"}, Case{89s, "about a minute left"}, Case{90s, "about 2 minutes left"},
          Case{149s, "about 2 minutes left"}, Case{150s, "about 3 minutes left"}, Case{3299s, "about 55 minutes left"},
          Case{55min, "about an hour left"}, Case{89min, "about an hour left"}, Case{90min, "about 2 hours left"},
          Case{149min, "about 2 hours left"}, Case{24h, "about 24 hours left"}})
        EXPECT_EQ(timeLeftText(each.left), each.text) << each.left.count();
}

} // namespace
} // namespace vorn
