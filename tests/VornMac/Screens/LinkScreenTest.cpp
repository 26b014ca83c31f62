#include "tests/VornMac/Window/CodeReader.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <cstdio>

#include <gmock/gmock.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(LinkScreen, CountsDownEverySecondToZero)
{
    WindowFixture fix;
    fix.model.launch();
    fix.model.answer(ModelFixture::links, linkJSON(600'000, "2026-03-01T09:01:01Z"));
    fix.settle();
    EXPECT_THAT(fix.words(), Contains("1:01"));
    for (int left = 60; left > 0; --left) {
        fix.model.advance(1s);
        char text[8];
        std::snprintf(text, sizeof text, "%d:%02d", left / 60, left % 60);
        EXPECT_THAT(fix.words(), Contains(text));
    }
}

TEST(LinkScreen, CountsDownOnlyToAnEndThatIsKnown)
{
    WindowFixture fix;
    fix.model.launch();
    fix.model.answer(ModelFixture::links, linkJSON(2000, "soon"));
    fix.settle();
    EXPECT_TRUE(fix.shows("QR code to link this Mac"));
    EXPECT_THAT(fix.words(), Not(Contains(HasSubstr("New code in "))));
    EXPECT_THAT(fix.spoken(), Not(Contains(HasSubstr("New code in "))));
}

TEST(LinkScreen, CoversTheCodeOnceItIsScanned)
{
    WindowFixture fix;
    play(fix, "1-link-showing");
    EXPECT_TRUE(fix.shows("QR code to link this Mac"));
    fix.model.advance(2s);
    fix.model.answer(ModelFixture::polls, pollJSON("scanned"));
    fix.settle();
    EXPECT_FALSE(fix.shows("QR code to link this Mac"));
    EXPECT_TRUE(fix.shows("Confirm on your phone"));
}

TEST(LinkScreen, StopsCountingAndLeadsToTheThirdStepOnceTheCodeIsScanned)
{
    WindowFixture fix;
    play(fix, "1-link-showing");
    EXPECT_THAT(fix.spoken(), Contains("StaticText: New code in 1:58"));
    EXPECT_THAT(fix.spoken(), Contains("ListItem: 1. Open Vorn on your iPhone."));
    fix.model.advance(2s);
    fix.model.answer(ModelFixture::polls, pollJSON("scanned"));
    fix.settle();
    EXPECT_THAT(fix.words(), Not(Contains(HasSubstr("New code in "))));
    EXPECT_THAT(fix.spoken(), Not(Contains(HasSubstr("New code in "))));
    EXPECT_THAT(fix.spoken(), Contains("ListItem: 1. Open Vorn on your iPhone. – Done"));
    EXPECT_THAT(fix.spoken(),
                Contains("ListItem: 3. Point your camera at the code, then confirm on your phone. – Next"));
}

/// The ways in which a code ends before it is confirmed.
struct CodeEnd {
    const char* name;
    void (*end)(ModelFixture&);
};

constexpr CodeEnd codeEnds[] = {
    {"declined",
     [](ModelFixture& model) {
         model.advance(2s);
         model.answer(ModelFixture::polls, pollJSON("rejected"));
     }},
    {"taken back",
     [](ModelFixture& model) {
         model.advance(2s);
         model.answer(ModelFixture::polls, pollJSON("expired"));
     }},
    {"expired", [](ModelFixture& model) { model.advance(118s); }},
    {"lost",
     [](ModelFixture& model) {
         model.advance(2s);
         model.fail(ModelFixture::polls, URLError::Code::timedOut);
     }},
};

TEST(LinkScreen, ShowsNothingMoreOfACodeThatLeadsNowhere)
{
    for (const CodeEnd& each : codeEnds) {
        SCOPED_TRACE(each.name);
        WindowFixture fix;
        play(fix, "1-link-showing");
        ASSERT_TRUE(fix.shows("QR code to link this Mac"));
        each.end(fix.model);
        fix.settle();
        EXPECT_FALSE(fix.shows("QR code to link this Mac"));
        EXPECT_THAT(fix.words(), Not(Contains(HasSubstr("New code in "))));
        EXPECT_EQ(codeIn(fix.picture()).value_or(""), "") << "what stands in its place is no code";
    }
}

TEST(LinkScreen, ShowsTheCodeThatComesAfterADeclinedOne)
{
    WindowFixture fix;
    play(fix, "1-link-rejected");
    fix.model.advance(3s);
    fix.model.answer(ModelFixture::links, linkJSON(2000, "2026-03-01T09:02:00Z"));
    fix.settle();
    EXPECT_TRUE(fix.shows("QR code to link this Mac"));
    EXPECT_TRUE(fix.shows("Waiting for your phone"));
    EXPECT_FALSE(fix.shows("Your phone declined the link. Here's a new code."));
}

TEST(LinkScreen, ShowsACodeThatIsReadInBothThemes)
{
    const std::string longer = linkPayload + std::string(120, 'x');
    for (const std::string& payload : {std::string(linkPayload), longer}) {
        WindowFixture fix;
        fix.model.launch();
        fix.model.answer(ModelFixture::links, linkJSON(2000, "2026-03-01T09:01:58Z", payload));
        for (const auto theme : {Appearance::Theme::light, Appearance::Theme::dark}) {
            SCOPED_TRACE(::testing::Message()
                         << payload.size() << " characters, dark " << (theme == Appearance::Theme::dark));
            Appearance::shared().setTheme(theme);
            const auto read = codeIn(fix.picture());
            if (!read) GTEST_SKIP() << "there is no program to read codes with";
            EXPECT_EQ(*read, payload);
        }
    }
}

// With a clock that is far ahead, every code has expired when it arrives.
TEST(LinkScreen, GoesOnGettingACodeUntilTheClockIsRight)
{
    WindowFixture fix;
    fix.model.launch();
    for (std::size_t asked = 1; asked < 5; ++asked) {
        ASSERT_EQ(fix.model.asked(ModelFixture::links), asked) << "a second lies between two";
        fix.model.answer(ModelFixture::links, linkJSON(2000, "2026-03-01T08:00:00Z"));
        fix.settle();
        EXPECT_THAT(fix.words(), Contains("Getting a code…")) << "nobody waits for a phone that has nothing to scan";
        EXPECT_FALSE(fix.shows("QR code to link this Mac"));
        EXPECT_THAT(fix.words(), Not(Contains(HasSubstr("New code in "))));
        fix.model.advance(1s);
    }
    fix.model.answer(ModelFixture::links, linkJSON());
    fix.settle();
    EXPECT_TRUE(fix.shows("QR code to link this Mac"));
    EXPECT_TRUE(fix.shows("Waiting for your phone"));
}

TEST(LinkScreen, TakesAFreshCodeAtOnceWhenAskedTo)
{
    WindowFixture fix;
    play(fix, "1-link-failed");
    fix.click("Try again");
    EXPECT_EQ(fix.model.asked(ModelFixture::links), 2U);
    EXPECT_THAT(fix.words(), Contains("Getting a code…"));
    EXPECT_FALSE(fix.shows("Try again"));
    fix.model.answer(ModelFixture::links, linkJSON());
    fix.settle();
    EXPECT_TRUE(fix.shows("QR code to link this Mac"));
}

} // namespace
} // namespace vorn::testing
