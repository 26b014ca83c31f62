#include "tests/VornMac/View/ScreenFixture.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using testing::ModelFixture;
using testing::paidQuestJSON;
using testing::questJSON;
using testing::ScopedEnvironment;
using testing::ScreenFixture;

// In ns since 2001, the unit of Messages.
constexpr std::int64_t day = 86'400'000'000'000;
constexpr std::int64_t newYear2026 = 788'918'400'000'000'000;

class FindScreen : public ::testing::Test {
protected:
    void enterFind()
    {
        fix_.fix.launchSignedIn();
        fix_.show();
    }
    void find(const std::string& quest = questJSON())
    {
        enterFind();
        fix_.fix.answer(ModelFixture::quest, quest);
        fix_.fix.runAll();
    }

    const ShownText& text() { return fix_.screen().text(); }

    ScopedEnvironment zone_{"TZ", "UTC"};
    ScopedEnvironment language_{"LC_ALL", "en_US.UTF-8"};
    ScreenFixture fix_;
};

TEST_F(FindScreen, FollowsTheScan)
{
    fix_.fix.launch();
    fix_.show();
    EXPECT_EQ(fix_.value("isFound"), "false");
    EXPECT_EQ(fix_.value("isLooking"), "true");
    fix_.fix.linkAs(testing::adasSession());
    fix_.screen().lookForChat();
    EXPECT_EQ(text().title, "Looking in Messages…");
    EXPECT_EQ(fix_.value("statisticsLabels"), "");
    EXPECT_EQ(fix_.value("statisticsValues"), "");
    EXPECT_EQ(fix_.value("canUpload"), "false");
    fix_.fix.run();
    while (fix_.fix.isWaiting(ModelFixture::quest)) fix_.fix.answer(ModelFixture::quest, questJSON());
    fix_.fix.runAll();
    EXPECT_EQ(text().title, "Found on this Mac");
    EXPECT_EQ(fix_.value("isFound"), "true");
    EXPECT_EQ(fix_.value("isLooking"), "false");
    EXPECT_EQ(fix_.value("statisticsLabels"), "Messages | Your messages | Nimbrel replies | Dates");
    EXPECT_EQ(fix_.screen().preview()->rowCount(), 3);
    EXPECT_EQ(fix_.value("canUpload"), "true");
}

TEST_F(FindScreen, TellsWhyNothingIsFound)
{
    struct Case {
        std::string body;
        int status;
        const char* title;
        const char* line;
    };
    for (const Case& each : {
             Case{questJSON("available", ""), 200, "Not available yet",
                  "Nimbrel export isn't set up yet. Try again later."},
             Case{questJSON("available", R"("+15559999999")"), 200, "Not found on this Mac", ""},
             Case{testing::errorJSON("no such route", "not_found"), 404, "Not available yet",
                  "Nimbrel export isn't available yet. Check back soon."},
             Case{testing::errorJSON("Try later.", "busy"), 500, "Something went wrong", "Try later."},
         }) {
        SCOPED_TRACE(each.line);
        ScreenFixture fix;
        fix.fix.launchSignedIn();
        fix.show();
        fix.fix.answer(ModelFixture::quest, each.body, each.status);
        fix.fix.runAll();
        EXPECT_EQ(fix.screen().text().title, each.title);
        EXPECT_EQ(fix.screen().text().status.text, each.line);
        EXPECT_EQ(fix.value("isFound"), "false");
        EXPECT_EQ(fix.value("isLooking"), "false");
        EXPECT_EQ(fix.value("canUpload"), "false");
    }
}

TEST_F(FindScreen, CountsTheChat)
{
    for (int number = 0; number < 1201; ++number)
        fix_.fix.messages.message({.isFromMe = std::int64_t{1}, .date = newYear2026 + number / 1000 * 59 * day});
    find();
    EXPECT_EQ(fix_.value("statisticsValues"), "1,204 | 1,201 | 3 | Mar 8, 2023 – Mar 1, 2026");
    EXPECT_EQ(fix_.screen().preview()->rowCount(), 6);
}

TEST_F(FindScreen, HasNoDatesWithoutMessages)
{
    find(questJSON("available", R"("+15559999999")"));
    EXPECT_EQ(fix_.value("statisticsLabels"), "Messages | Your messages | Nimbrel replies");
    EXPECT_EQ(fix_.value("statisticsValues"), "0 | 0 | 0");
}

TEST_F(FindScreen, TellsWhatTheQuestMeansForTheNextUpload)
{
    struct Case {
        std::string quest;
        const char* note;
        const char* canUpload;
    };
    const std::string rejected =
        R"({"quest":{"id":"quest-1","status":"rejected","rejectionReasonKey":"wrong_provider"},"handles":["+15550102030"],"maxBytes":5000000000})";
    for (const Case& each : {
             Case{questJSON("available"), "", "true"},
             Case{questJSON("submitted"), "Your last upload is being checked.", "false"},
             Case{rejected, "Last time: This upload didn't look like your Nimbrel chat.", "true"},
             Case{paidQuestJSON("2026-03-09T09:00:00Z"), "Paid. You can upload again on Mar 9, 2026.", "false"},
             Case{paidQuestJSON("2026-02-09T09:00:00Z"), "", "true"},
         }) {
        SCOPED_TRACE(each.quest);
        ScreenFixture fix;
        fix.fix.launchSignedIn();
        fix.show();
        fix.fix.answer(ModelFixture::quest, each.quest);
        fix.fix.runAll();
        EXPECT_EQ(fix.screen().text().remark.text, each.note);
        EXPECT_EQ(fix.value("canUpload"), each.canUpload);
    }
}

TEST_F(FindScreen, OffersAnUploadOnceTheCooldownIsOverAndTheScreenIsEnteredAgain)
{
    find(paidQuestJSON("2026-03-01T09:10:00Z"));
    EXPECT_EQ(fix_.value("canUpload"), "false");
    EXPECT_EQ(fix_.fix.clock.pendingSleeps(), 0U); // an idle screen has no timers
    fix_.fix.advance(10min);
    fix_.told();
    fix_.fix.model().go(Step::upload);
    EXPECT_EQ(fix_.value("canUpload"), "true");
    EXPECT_EQ(fix_.told().at("canUploadChanged"), 1);
}

TEST_F(FindScreen, ForgetsWhatItFoundWithTheSession)
{
    find();
    fix_.screen().signOut();
    EXPECT_EQ(fix_.value("isFound"), "false");
    EXPECT_EQ(fix_.value("statisticsValues"), "");
    EXPECT_EQ(text().remark.text, "");
    EXPECT_EQ(fix_.screen().reward().amount, "the quest reward");
    EXPECT_EQ(fix_.value("canUpload"), "false");
    EXPECT_EQ(fix_.screen().preview()->rowCount(), 0);
}

} // namespace
} // namespace vorn
