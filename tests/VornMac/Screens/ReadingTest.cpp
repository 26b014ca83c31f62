#include "tests/VornMac/Window/HandDrivenAnimations.h"
#include "tests/VornMac/Window/Scenes.h"

#include <algorithm>
#include <map>

#include <gmock/gmock.h>

// What screen readers find and are told.
namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

bool isControlsRole(QAccessible::Role role)
{
    constexpr QAccessible::Role roles[] = {QAccessible::Button, QAccessible::CheckBox, QAccessible::Link,
                                           QAccessible::ButtonMenu, QAccessible::MenuItem};
    return std::find(std::begin(roles), std::end(roles), role) != std::end(roles);
}

/// A role that needs no name of its own.
bool isNameless(QAccessible::Role role)
{
    return role == QAccessible::Client || role == QAccessible::Window || role == QAccessible::Separator ||
           role == QAccessible::NoRole;
}

/// A scene's reading and texts. The items of the reading no longer exist.
struct Seen {
    std::string name;
    std::vector<Read> reading;
    std::vector<std::string> words;
};

/// Every scene, played once for all tests that only read it.
const std::vector<Seen>& seenScenes()
{
    static const std::vector<Seen> scenes = [] {
        std::vector<Seen> seen;
        for (const Scene& scene : allScenes()) {
            WindowFixture fix;
            play(fix, scene.name);
            seen.push_back({scene.name, fix.reading(), fix.words()});
        }
        return seen;
    }();
    return scenes;
}

TEST(Reading, NamesEverythingAndEveryControlItsRole)
{
    for (const Seen& scene : seenScenes()) {
        for (const Read& read : scene.reading) {
            SCOPED_TRACE(scene.name + ", " + nameOf(read.role) + " " + read.name);
            if (!isNameless(read.role)) EXPECT_FALSE(read.name.empty());
            if (read.isControl()) EXPECT_TRUE(isControlsRole(read.role));
            if (isControlsRole(read.role)) EXPECT_FALSE(read.actions.empty());
        }
    }
}

TEST(Reading, SaysNothingTwice)
{
    for (const Seen& scene : seenScenes()) {
        const auto& reading = scene.reading;
        std::map<std::pair<int, std::string>, int> siblings;
        for (const Read& read : reading) {
            const bool isMessage = read.role == QAccessible::ListItem && read.parent >= 0 &&
                                   reading[static_cast<std::size_t>(read.parent)].role ==
                                       QAccessible::List; // of which two may have the same name
            if (read.name.empty() || isMessage) continue;
            SCOPED_TRACE(scene.name + ", " + read.name);
            EXPECT_EQ(++siblings[std::pair(read.parent, read.name)], 1);
            if (read.parent < 0) continue;
            EXPECT_NE(reading[static_cast<std::size_t>(read.parent)].name, read.name)
                << "what holds it says so already";
        }
    }
}

TEST(Reading, CoversEveryWordThatIsDrawn)
{
    for (const Seen& scene : seenScenes()) {
        std::string all;
        for (const std::string& line : spokenLines(scene.reading)) all += line + "\n";
        for (const std::string& words : scene.words) {
            SCOPED_TRACE(scene.name);
            const bool isPercentage = words.ends_with(" %"); // spoken as a word
            const std::string said = isPercentage ? words.substr(0, words.size() - 1) + "percent" : words;
            if (words.size() > 1) EXPECT_THAT(all, HasSubstr(said)); // a single letter is a picture
        }
    }
}

TEST(Reading, LeavesTheShapeOfAChatOut)
{
    WindowFixture fix;
    play(fix, "4-find-loading");
    EXPECT_THAT(fix.spoken(), ::testing::Not(Contains(HasSubstr("List"))));
}

TEST(Reading, SaysHowFarTheUploadIs)
{
    WindowFixture fix;
    play(fix, "5-upload-uploading");
    EXPECT_THAT(fix.spoken(), Contains("ProgressBar: vorn-nimbrel-export.zip – 42 percent"));
}

TEST(Reading, SaysTheToneOfAStatus)
{
    struct Case {
        const char* scene;
        const char* spoken;
    };
    for (const Case& each :
         {Case{"1-link-showing", "Waiting for your phone – In progress"},
          Case{"1-link-scanned", "Scanned. Confirm Link this Mac on your phone. – OK"},
          Case{"1-link-rejected", "Your phone declined the link. Here's a new code. – Attention"},
          Case{"1-link-failed", "You're offline. Vorn will retry. – Error"},
          Case{"0-keychain-waiting", "Waiting for your keychain… – In progress"},
          Case{"3-access-granted", "Access granted. – OK"},
          Case{"4-find-found-in-review", "Your last upload is being checked. – In progress"},
          Case{"5-upload-failed", "Your chat is larger than the upload limit. – Error"},
          Case{"6-done-expired", "The upload didn't finish. Try again from your chat. – Attention"}}) {
        SCOPED_TRACE(each.scene);
        WindowFixture fix;
        play(fix, each.scene);
        EXPECT_THAT(fix.spoken(), Contains("StaticText: " + std::string(each.spoken)));
    }
}

/// The state of each of the screen's numbered steps, spoken after its name.
std::vector<std::string> standings(WindowFixture& fix)
{
    std::vector<std::string> standings;
    for (const Read& read : fix.reading()) {
        if (read.role == QAccessible::ListItem) standings.push_back(read.description);
    }
    return standings;
}

TEST(Reading, SaysHowEachStepStands)
{
    struct Case {
        const char* scene;
        std::vector<std::string> standings;
    };
    for (const Case& each : {Case{"1-link-showing", {"", "", ""}}, Case{"1-link-scanned", {"Done", "Done", "Next"}},
                             Case{"3-access-denied", {"Next", "", ""}}, Case{"3-access-no-database", {"", "", ""}},
                             Case{"3-access-granted", {"Done", "Done", "Done"}}}) {
        SCOPED_TRACE(each.scene);
        WindowFixture fix;
        play(fix, each.scene);
        EXPECT_EQ(standings(fix), each.standings);
    }
}

TEST(Reading, NamesTheCodeAndItsTime)
{
    WindowFixture fix;
    play(fix, "1-link-showing");
    EXPECT_THAT(fix.spoken(), Contains("Graphic: QR code to link this Mac"));
    EXPECT_THAT(fix.spoken(), Contains("StaticText: New code in 1:58"));
}

/// With motion, the outgoing screen is visible for a while beside the incoming one.
class Announcements : public ::testing::TestWithParam<WindowFixture::Motion> {
protected:
    /// Waits until everything stands still; `said` matches what was spoken until then.
    template <class Matcher>
    void stand(const Matcher& said)
    {
        fix_.settle();
        animations_.pass(1000);
        fix_.settle();
        EXPECT_THAT(fix_.announced(), said);
    }
    void stand() { stand(::testing::_); }

    HandDrivenAnimations animations_;
    WindowFixture fix_{GetParam()};
};

TEST_P(Announcements, TellEveryPhaseOfLinkingOnce)
{
    fix_.model.launch();
    stand();
    fix_.model.answer(ModelFixture::links, linkJSON(2000));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), ElementsAre("Waiting for your phone"));
    fix_.model.advance(2s);
    fix_.model.answer(ModelFixture::polls, pollJSON("scanned"));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), ElementsAre("Scanned. Confirm Link this Mac on your phone."));
    fix_.model.advance(2s);
    fix_.model.answer(ModelFixture::polls, pollJSON("rejected"));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), ElementsAre("Your phone declined the link. Here's a new code."));
}

TEST_P(Announcements, LeaveTheCountdownOut)
{
    play(fix_, "1-link-showing");
    stand();
    for (const char* left : {"1:57", "1:56", "1:55"}) {
        fix_.model.advance(1s);
        if (fix_.model.isWaiting(ModelFixture::polls)) fix_.model.answer(ModelFixture::polls, pollJSON("pending"));
        fix_.settle();
        EXPECT_THAT(fix_.words(), Contains(left));
    }
    EXPECT_THAT(fix_.announced(), IsEmpty());
}

TEST_P(Announcements, LeaveTheUploadsProgressOut)
{
    fix_.model.launchUploading();
    stand();
    const HTTPRequest& part = fix_.model.http->request(fix_.model.http->waiting(ModelFixture::puts).value());
    for (const std::int64_t sent : {1, 2, 3}) part.onBodyProgress(sent);
    fix_.settle();
    EXPECT_THAT(fix_.announced(), IsEmpty());
    fix_.model.http->acknowledge(fix_.model.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix_.settle();
    EXPECT_THAT(fix_.announced(), ElementsAre("Finishing up…"));
}

TEST_P(Announcements, TellTheOutcomeOnce)
{
    fix_.model.launchDone();
    stand();
    fix_.model.advance(5s);
    fix_.model.answer(ModelFixture::review, submissionJSON("review_pending"));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), ElementsAre("Upload received A person is checking it"));
    fix_.model.advance(30s);
    fix_.model.answer(ModelFixture::review, submissionJSON("review_pending"));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), IsEmpty());
    fix_.model.advance(30s);
    fix_.model.answer(ModelFixture::review, submissionJSON("expired"));
    fix_.settle();
    EXPECT_THAT(fix_.announced(), Contains("Upload stopped Nothing was sent").Times(1));
}

TEST_P(Announcements, TellWhatTheScanFound)
{
    fix_.model.launchSignedIn();
    stand();
    fix_.model.fail(ModelFixture::quest, URLError::Code::cannotConnectToHost);
    fix_.settle();
    EXPECT_THAT(fix_.announced(), Contains(HasSubstr("Vorn can't reach the server right now.")).Times(1));
}

TEST_P(Announcements, SayNothingOfWhatIsLeft)
{
    play(fix_, "5-upload-finishing");
    stand();
    fix_.model.answer(ModelFixture::completes, submissionJSON("analyzing"));
    stand(ElementsAre("Upload received Checking your chat"));
    fix_.model.model().signOut();
    stand(::testing::UnorderedElementsAre("Link your phone Your phone links this Mac", "Getting a code…"));
}

INSTANTIATE_TEST_SUITE_P(, Announcements,
                         ::testing::Values(WindowFixture::Motion::reduced, WindowFixture::Motion::full),
                         [](const auto& info) {
                             return info.param == WindowFixture::Motion::full ? "WithMotion" : "WithoutMotion";
                         });

} // namespace
} // namespace vorn::testing
