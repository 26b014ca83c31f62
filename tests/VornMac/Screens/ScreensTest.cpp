#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/service/ServiceAnswers.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string_view>

#include <gmock/gmock.h>

#include <QFont>

// Screens with extreme values.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::Not;

/// The bubbles of the found chat as a screen reader speaks them.
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
    // Messages without a date take another's, so a result with messages always has dates: this changes the card itself.
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

TEST(FindScreen, ShowsTheShapeOfAChatOnlyWhileItLooks)
{
    const auto shows = [](WindowFixture& fix, std::string_view type) {
        const auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
        return std::any_of(items.begin(), items.end(), [&](const QQuickItem* item) {
            return std::string_view(item->metaObject()->className()).starts_with(type) && item->height() >= 56;
        });
    };
    for (const Scene& scene : allScenes()) {
        if (!scene.name.starts_with("4-") || scene.name.starts_with("4-find-everything")) continue;
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        scene.play(fix);
        fix.settle();
        const bool isLooking = scene.name == "4-find-loading";
        const bool isFound = fix.shows("Found on this Mac");
        EXPECT_EQ(shows(fix, "PlaceholderThread"), isLooking);
        EXPECT_EQ(shows(fix, "MessageThread"), isFound);
        EXPECT_EQ(shows(fix, "vorn::Symbol"), !isLooking && !isFound);
        EXPECT_EQ(fix.shows("Only on this Mac. Nothing is uploaded yet."), isFound);
    }
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

/// The drawing of the amount on the reward card.
struct DrawnAmount {
    const char* scene;
    int size;
    const char* colour; ///< of Theme
    double opacity;
};

TEST(DoneScreen, ShoutsNoAmountThatIsNotPaid)
{
    for (const DrawnAmount& each :
         {DrawnAmount{"6-done-analyzing", 44, "ink", 1}, DrawnAmount{"6-done-approved", 44, "ink", 1},
          DrawnAmount{"6-done-rejected", 36, "secondary", 1}, DrawnAmount{"6-done-expired", 44, "ink", 0.6}}) {
        SCOPED_TRACE(each.scene);
        WindowFixture fix;
        play(fix, each.scene);
        const auto texts = drawnTexts(fix.window());
        const auto amount =
            std::find_if(texts.begin(), texts.end(), [](const DrawnText& text) { return text.text.startsWith("$"); });
        ASSERT_NE(amount, texts.end());
        EXPECT_EQ(amount->item->property("font").value<QFont>().pixelSize(), each.size);
        EXPECT_EQ(amount->color, fix.theme().property(each.colour).value<QColor>());
        EXPECT_NEAR(amount->opacity, each.opacity, 0.001);
    }
}

TEST(DoneScreen, WritesWordsForTheAmountInTheSizeOfATitle)
{
    WindowFixture fix;
    play(fix, "6-done-approved-unknown-reward");
    for (const DrawnText& text : drawnTexts(fix.window()))
        if (text.text == "the quest reward") EXPECT_EQ(text.item->property("font").value<QFont>().pixelSize(), 28);
    EXPECT_THAT(fix.words(), Contains("the quest reward"));
}

TEST(DoneScreen, StrikesOnlyARefusedAmountThroughAndThinly)
{
    for (const char* scene : {"6-done-rejected", "6-done-expired", "6-done-approved", "6-done-analyzing"}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        const QColor strike = fix.theme().property("tertiary").value<QColor>();
        const auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
        const auto count = std::count_if(items.begin(), items.end(), [&](const QQuickItem* item) {
            return item->height() == 2 && item->property("color").value<QColor>() == strike;
        });
        EXPECT_EQ(count, std::string_view(scene) == "6-done-rejected" ? 1 : 0);
    }
}

TEST(DoneScreen, FillsTheButtonThatLeavesOnceTheOutcomeIsFinal)
{
    for (const auto& [scene, isFinal] :
         {std::pair("6-done-analyzing", false), std::pair("6-done-review-pending", false),
          std::pair("6-done-approved", true), std::pair("6-done-rejected", true), std::pair("6-done-expired", true)}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        EXPECT_EQ(fix.named("Back to your chat")->property("isQuiet").toBool(), !isFinal);
    }
}

/// The words beside the symbol on the reward card, and their spoken form.
TEST(RewardCard, TellsHowTheRewardStands)
{
    struct Case {
        const char* scene;
        const char* spoken;
    };
    for (const Case& each : {Case{"5-upload-preparing", "$12.50, Chat export quest – Packing"},
                             Case{"5-upload-uploading", "$12.50, Chat export quest – Uploading"},
                             Case{"5-upload-finishing", "$12.50, Chat export quest – Finishing"},
                             Case{"5-upload-failed", "$12.50, Chat export quest – Not sent"},
                             Case{"6-done-analyzing", "$12.50, Chat export quest – Checking"},
                             Case{"6-done-review-pending", "$12.50, Chat export quest – A person is checking"},
                             Case{"6-done-approved", "$15.00, Chat export quest – Paid"},
                             Case{"6-done-rejected", "$12.50, Chat export quest – Not accepted"},
                             Case{"6-done-expired", "$12.50, Chat export quest – Stopped"}}) {
        SCOPED_TRACE(each.scene);
        WindowFixture fix;
        play(fix, each.scene);
        EXPECT_THAT(fix.spoken(), Contains("StaticText: " + std::string(each.spoken)));
    }
}

TEST(RewardCard, KeepsItsPlaceAndSizeInEveryPhase)
{
    std::optional<QRectF> before;
    for (const Scene& scene : allScenes()) {
        if (!scene.name.starts_with("5-") && !scene.name.starts_with("6-")) continue;
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        scene.play(fix);
        fix.lay();
        const auto items = itemsBelow(fix.window().contentItem(), [](QQuickItem* item) { return item->isVisible(); });
        const auto card = std::find_if(items.begin(), items.end(), [](const QQuickItem* item) {
            return std::string_view(item->metaObject()->className()).starts_with("RewardCard");
        });
        ASSERT_NE(card, items.end());
        const QRectF frame = (*card)->mapRectToScene(QRectF(0, 0, (*card)->width(), (*card)->height()));
        if (before) EXPECT_EQ(frame, *before);
        before = frame;
    }
    EXPECT_NEAR(before.value().center().y(), 406, 1) << "the middle of the panel";
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
