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

/// Texts in which the system's detector finds a link.
constexpr std::string_view foundBySystem[] = {
    "https://example.com/a?b=c#d",
    "HTTP://EXAMPLE.COM",
    "http://localhost/",
    "http://nas",
    "http://[::1]:80/",
    "https:example.com",
    // without a scheme
    "example.com",
    "www.example.com",
    "example.co.uk/a",
    "t.co/x",
    "10.0.0.7:8080",
    "a-b.example.org",
    "_dmarc.example.com",
    // top-level domains, of every length
    "example.museum",
    "example.photography",
    "example.travelersinsurance",
    "example.io",
    "example.xn--p1ai",
    "example.みんな",
    // beyond ASCII
    "https://bücher.example/x",
    "bücher.de",
    "пример.рф",
    "例え.jp",
    "☕.ws",
    "i❤.ws",
    "example。com",
    "example．com",
    "example｡com",
    "例え。jp",
    "https://例え。テスト",
    // e-mail
    "anna@example.com",
    "anna.smith+tag@mail.example.org",
    "mailto:anna@example.com",
    "mailto:anna",
    "anna@localhost",
    "anna@bücher.de",
    // other schemes
    "ftp://example.com",
    "ssh://anna@host",
    "file:///etc/hosts",
    "webcal://example.com/a.ics",
    "tel:+15550102030",
    "tel:5550102030",
    "sms:+15550102030",
    "sms:555",
    "facetime:anna@example.com",
    "facetime://5550102030",
    "news:comp.lang",
    "x-apple.systempreferences:a",
    "maps:?q=a",
    "magnet:?xt=urn:btih:a",
    "data:,a",
    "about:blank",
    "javascript:a",
    "spotify:track:1",
    "urn:isbn:0",
    "x:é",
};

TEST(CandidateScan, LosesNothingThatTheSystemsDetectorFinds)
{
    for (const std::string_view link : foundBySystem) {
        EXPECT_TRUE(mayHoldLink(link)) << link;
        for (std::size_t place = 0; place < 40; ++place) {
            const std::string before = std::string(place, ' ') + "(";
            ASSERT_TRUE(mayHoldLink(before + std::string(link) + ")")) << link << " at " << before.size();
            ASSERT_TRUE(mayHoldLink(std::string(link) + std::string(place, 'a'))) << link << " before " << place;
            ASSERT_TRUE(mayHoldLink("我们" + std::string(link) + std::string(place, ' '))) << link;
        }
    }
}

TEST(CandidateScan, SparesTheSystemsDetectorPlainText)
{
    for (const std::string_view text : {"",
                                        ".",
                                        ":",
                                        "@",
                                        "a.",
                                        ".a",
                                        "a:",
                                        ":a",
                                        "@a",
                                        "a@",
                                        "Thanks, see you tomorrow.",
                                        "Yes. No. Maybe!",
                                        "wait... what",
                                        "At 9:30, or 10:15:30.",
                                        "note: bread, milk",
                                        "haha :) ok :-D",
                                        "(He said \"no.\")",
                                        "@anna look",
                                        "It's 5 o'clock",
                                        "ありがとう。明日会いましょう。",
                                        "好的。",
                                        "привет, как дела?",
                                        "😂😂 👍🏽",
                                        "5 € / 6 $",
                                        "a.\nb",
                                        "one\ttwo"}) {
        EXPECT_FALSE(mayHoldLink(text)) << text;
    }
}

/// The scan must let through whatever our own detector finds.
TEST(CandidateScan, TakesEveryCandidateForAMark)
{
    for (const std::string_view text :
         {"see b.de", "ä.é", "3.5", "a://", "1://", "é.a://b", "localhost:80", "a LocalHost:1"}) {
        ASSERT_NE(nextCandidate(text, 0), none) << text;
        EXPECT_TRUE(mayHoldLink(text)) << text;
    }
}

} // namespace
} // namespace vorn::links
