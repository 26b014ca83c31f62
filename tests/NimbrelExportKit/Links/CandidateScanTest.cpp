#include "NimbrelExportKit/Links/CandidateScan.h"

#include <string>

#include <gtest/gtest.h>

namespace vorn::links {
namespace {

constexpr auto none = std::string_view::npos;

TEST(CandidateScan, StopsAtDotsBetweenWords)
{
    EXPECT_EQ(nextCandidate("see b.de", 0), 5U);
    EXPECT_EQ(nextCandidate("ä.é", 0), 2U);
    EXPECT_EQ(nextCandidate("3.5", 0), 1U);
}

TEST(CandidateScan, StopsAtTheColonBehindAScheme)
{
    EXPECT_EQ(nextCandidate("http://x", 0), 4U);
    EXPECT_EQ(nextCandidate("a://", 0), 1U);
}

TEST(CandidateScan, StopsAtThePortOfTheLocalMachine)
{
    EXPECT_EQ(nextCandidate("localhost:80", 0), 9U);
    EXPECT_EQ(nextCandidate("see LocalHost:8080 there", 0), 13U);
    EXPECT_EQ(nextCandidate("https://localhost:1", 9), 17U);
    for (const std::string_view text :
         {"localhost:", "localhost:a", "localhost 80", "host:80", "at:80", "ocalhost:80", "localhost", ":80", "t:80"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(nextCandidate(text, 0), none);
    }
    for (std::size_t place = 0; place < 40; ++place) {
        ASSERT_EQ(nextCandidate(std::string(place, ' ') + "localhost:80", 0), place + 9);
    }
}

TEST(CandidateScan, PassesOverPunctuation)
{
    for (const std::string_view text : {"", ".", ":", "a.", ".a", "Yes. No.", "wait...", "a.)", "(.a", "9:30",
                                        "note: this", "a:/b", "://x", "a:", "a:/", "-.a", "a.-"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(nextCandidate(text, 0), none);
    }
}

TEST(CandidateScan, FindsEveryPlaceOfABlock)
{
    for (std::size_t size = 3; size < 70; ++size) {
        for (std::size_t place = 1; place + 1 < size; ++place) {
            std::string text(size, 'a');
            text[place] = '.';
            ASSERT_EQ(nextCandidate(text, 0), place) << size;
            ASSERT_EQ(nextCandidate(text, place), place) << size;
            ASSERT_EQ(nextCandidate(text, place + 1), none) << size;
        }
    }
}

TEST(CandidateScan, FindsTheFirstOfSeveral)
{
    const std::string text = "one.two three.four https://five six.seven eight.nine";
    std::vector<std::size_t> found;
    for (std::size_t at = nextCandidate(text, 0); at != none; at = nextCandidate(text, at + 1)) found.push_back(at);
    EXPECT_EQ(found, (std::vector<std::size_t>{3, 13, 24, 35, 47}));
}

TEST(CandidateScan, ReadsPastNULs)
{
    const std::string_view text("\0\0\0a.b\0", 7);
    EXPECT_EQ(nextCandidate(text, 0), 4U);
}

TEST(CandidateScan, TakesAStartAtTheEnd)
{
    const std::string text(40, '.');
    EXPECT_EQ(nextCandidate(text, text.size()), none);
    EXPECT_EQ(nextCandidate("a.b", 3), none);
}

} // namespace
} // namespace vorn::links
