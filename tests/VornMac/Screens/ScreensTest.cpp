#include "tests/VornMac/Window/CodeReader.h"
#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <string_view>

#include <gmock/gmock.h>

#include <QFont>

// What the screens make of values at their edges.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::Not;

/// The found chat's bubbles, as a screen reader says them.
std::vector<std::string> bubbles(WindowFixture& fix)
{
    std::vector<std::string> bubbles;
    for (const Read& read : fix.reading()) {
        if (read.role == QAccessible::ListItem) bubbles.push_back(read.name);
    }
    return bubbles;
}

void scan(WindowFixture& fix)
{
    fix.model.launchFound();
    fix.settle();
    ASSERT_TRUE(fix.shows("Found on this Mac Your Nimbrel chat"));
}

MessageRow row(const std::string& text, std::int64_t seconds)
{
    return {.text = text, .date = (800'000'000 + seconds) * 1'000'000'000};
}

TEST(FindScreen, PreviewsAllOfThreeMessages)
{
    WindowFixture fix; // whose database has three
    scan(fix);
    EXPECT_THAT(bubbles(fix), ElementsAreArray({"Nimbrel: Hello", "Nimbrel: Hello", "Nimbrel: Hello"}));
}

TEST(FindScreen, PreviewsTheLastSixOfForty)
{
    WindowFixture fix;
    for (int number = 1; number <= 37; ++number) {
        MessageRow message = row("Message " + std::to_string(number), number);
        message.isFromMe = std::int64_t{number % 2};
        fix.model.messages.message(message);
    }
    scan(fix);
    EXPECT_THAT(fix.words(), Contains("40"));
    EXPECT_THAT(bubbles(fix), ElementsAreArray({"Nimbrel: Message 32", "You: Message 33", "Nimbrel: Message 34",
                                                "You: Message 35", "Nimbrel: Message 36", "You: Message 37"}));
}

TEST(FindScreen, Shows140CharactersAndCutsThe141st)
{
    WindowFixture fix;
    fix.model.messages.message(row(std::string(140, 'x'), 1));
    fix.model.messages.message(row(std::string(141, 'y'), 2));
    scan(fix);
    EXPECT_THAT(fix.words(), Contains(std::string(140, 'x')));
    EXPECT_THAT(fix.words(), Contains(std::string(140, 'y') + "…"));
    for (const DrawnText& text : drawnTexts(fix.window())) EXPECT_FALSE(text.isCut) << text.text.toStdString();
}

TEST(FindScreen, ShowsMessagesAsTheyAreWritten)
{
    WindowFixture fix;
    fix.model.messages.message(row("<b>1 & 2</b>\nüber 🦊", 1));
    scan(fix);
    EXPECT_THAT(fix.words(), Contains("<b>1 & 2</b>\nüber 🦊"));
    EXPECT_EQ(fix.named("Nimbrel: <b>1 & 2</b>\nüber 🦊")->property("text").toString(), "<b>1 & 2</b>\nüber 🦊");
}

TEST(FindScreen, LeavesTheDatesOutWhereOneIsMissing)
{
    WindowFixture fix;
    scan(fix);
    EXPECT_THAT(fix.words(), Contains("Dates"));
    // Messages without a date take another's, so an export that has messages has dates: the card is told otherwise.
    const auto isCard = [](const QQuickItem* item) {
        return std::string_view(item->metaObject()->className()).starts_with("StatisticsCard");
    };
    const auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
    QQuickItem* card = *std::find_if(items.begin(), items.end(), isCard);
    const double before = card->height();
    card->setProperty("labels", QStringList{"Messages", "Your messages", "Nimbrel replies"});
    fix.lay();
    EXPECT_THAT(fix.words(), Not(Contains("Dates")));
    EXPECT_THAT(fix.spoken(), Not(Contains(HasSubstr("Dates"))));
    EXPECT_NEAR(card->height(), before * 3 / 4, 2) << "the row goes, and its divider";
}

TEST(FindScreen, KeepsTheUploadOffWhileThereIsNoQuest)
{
    WindowFixture fix;
    play(fix, "4-find-found-in-review");
    EXPECT_TRUE(fix.shows("Found on this Mac Your Nimbrel chat"));
    EXPECT_FALSE(fix.isEnabled("Upload chat"));
}

TEST(DoneScreen, TakesAnUnknownStatusForAnalyzing)
{
    WindowFixture fix;
    fix.model.launchDone();
    fix.model.advance(5s);
    fix.model.answer(ModelFixture::review, submissionJSON("weighed"));
    fix.settle();
    EXPECT_TRUE(fix.shows("Upload received Checking your chat"));
}

TEST(DoneScreen, SaysNothingOfTheNextUploadWhereItIsNotKnown)
{
    WindowFixture fix;
    fix.model.launchDone();
    fix.model.advance(5s);
    fix.model.answer(ModelFixture::review, submissionJSON("approved"));
    fix.model.answer(ModelFixture::quest, questJSON("approved"));
    fix.settle();
    EXPECT_TRUE(fix.shows("The reward is in your Vorn balance."));
    EXPECT_THAT(fix.words(), Not(Contains(HasSubstr("Upload again on"))));
    EXPECT_THAT(fix.words(), Contains("You earned $12.50")) << "the quest's, for the submission has none";
}

TEST(DoneScreen, StrikesTheAmountThroughWhereNothingIsPaid)
{
    for (const auto& [scene, struck] : {std::pair("6-done-rejected", true), std::pair("6-done-expired", true),
                                        std::pair("6-done-approved", false), std::pair("6-done-analyzing", false)}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        for (const DrawnText& text : drawnTexts(fix.window())) {
            if (text.text.startsWith("$")) EXPECT_EQ(text.item->property("font").value<QFont>().strikeOut(), struck);
        }
    }
}

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

/// Whatever ends a code before it is confirmed.
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
    for (const auto theme : {Appearance::Theme::light, Appearance::Theme::dark}) {
        WindowFixture fix;
        Appearance::shared().setTheme(theme);
        play(fix, "1-link-showing");
        const auto read = codeIn(fix.picture());
        if (!read) GTEST_SKIP() << "there is no program to read codes with";
        EXPECT_EQ(*read, "vorn://link/qr-canary-1");
    }
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

TEST(ConsentScreen, NeedsBothTicks)
{
    WindowFixture fix;
    play(fix, "2-consent");
    EXPECT_FALSE(fix.isEnabled("Continue"));
    fix.click("I agree to share my Nimbrel chat");
    EXPECT_FALSE(fix.isEnabled("Continue"));
    fix.click("I understand what's uploaded");
    EXPECT_TRUE(fix.isEnabled("Continue"));
    fix.click("I agree to share my Nimbrel chat");
    EXPECT_FALSE(fix.isEnabled("Continue"));
}

TEST(ConsentScreen, LetsTheUserSpeakFromTheTrailingSide)
{
    WindowFixture fix;
    play(fix, "2-consent");
    const double middle = fix.window().width() - 42 - 220.0; // of the panel
    std::map<std::string, double> centres;
    for (const DrawnText& text : drawnTexts(fix.window())) centres[text.text.toStdString()] = text.frame.center().x();
    for (const char* mine : {"Find me a dinner spot for Friday", "Can you also remind me to buy flowers"})
        EXPECT_GT(centres.at(mine), middle + 10) << mine;
    for (const char* theirs :
         {"Lupa has a table for two at 7:30. Want me to book it?", "Done. I'll remind you Friday at 5 pm."})
        EXPECT_LT(centres.at(theirs), middle - 10) << theirs;
}

} // namespace
} // namespace vorn::testing
