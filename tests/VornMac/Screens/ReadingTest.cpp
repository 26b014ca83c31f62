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

/// What a scene shows. The items of the reading are gone.
struct Seen {
    std::string name;
    std::vector<Read> reading;
    std::vector<std::string> words;
};

/// Every scene, played once for all tests that only look.
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
            if (read.name.empty()) continue;
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
            if (words.size() > 1) EXPECT_THAT(all, HasSubstr(words)); // a single letter is a picture
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

TEST(Reading, NamesTheCodeAndItsTime)
{
    WindowFixture fix;
    play(fix, "1-link-showing");
    EXPECT_THAT(fix.spoken(), Contains("Graphic: QR code to link this Mac"));
    EXPECT_THAT(fix.spoken(), Contains("StaticText: New code in 1:58"));
}

TEST(Announcements, TellEveryPhaseOfLinkingOnce)
{
    WindowFixture fix;
    fix.model.launch();
    fix.settle();
    fix.announced();
    fix.model.answer(ModelFixture::links, linkJSON(2000));
    fix.settle();
    EXPECT_THAT(fix.announced(), ElementsAre("Waiting for your phone"));
    fix.model.advance(2s);
    fix.model.answer(ModelFixture::polls, pollJSON("scanned"));
    fix.settle();
    EXPECT_THAT(fix.announced(), ElementsAre("Scanned. Confirm Link this Mac on your phone."));
    fix.model.advance(2s);
    fix.model.answer(ModelFixture::polls, pollJSON("rejected"));
    fix.settle();
    EXPECT_THAT(fix.announced(), ElementsAre("Your phone declined the link. Here's a new code."));
}

TEST(Announcements, LeaveTheCountdownOut)
{
    WindowFixture fix;
    play(fix, "1-link-showing");
    fix.announced();
    for (const char* left : {"1:57", "1:56", "1:55"}) {
        fix.model.advance(1s);
        if (fix.model.isWaiting(ModelFixture::polls)) fix.model.answer(ModelFixture::polls, pollJSON("pending"));
        fix.settle();
        EXPECT_THAT(fix.words(), Contains(left));
    }
    EXPECT_THAT(fix.announced(), IsEmpty());
}

TEST(Announcements, LeaveTheUploadsProgressOut)
{
    WindowFixture fix;
    fix.model.launchUploading();
    fix.settle();
    fix.announced();
    const HTTPRequest& part = fix.model.http->request(fix.model.http->waiting(ModelFixture::puts).value());
    for (const std::int64_t sent : {1, 2, 3}) part.onBodyProgress(sent);
    fix.settle();
    EXPECT_THAT(fix.announced(), IsEmpty());
    fix.model.http->acknowledge(fix.model.http->waiting(ModelFixture::puts).value(), "\"tag-1\"");
    fix.settle();
    EXPECT_THAT(fix.announced(), ElementsAre("Finishing up…"));
}

TEST(Announcements, TellTheOutcomeOnce)
{
    WindowFixture fix;
    fix.model.launchDone();
    fix.settle();
    fix.announced();
    fix.model.advance(5s);
    fix.model.answer(ModelFixture::review, submissionJSON("review_pending"));
    fix.settle();
    EXPECT_THAT(fix.announced(), ElementsAre("Upload received A person is checking it"));
    fix.model.advance(30s);
    fix.model.answer(ModelFixture::review, submissionJSON("review_pending"));
    fix.settle();
    EXPECT_THAT(fix.announced(), IsEmpty());
    fix.model.advance(30s);
    fix.model.answer(ModelFixture::review, submissionJSON("expired"));
    fix.settle();
    EXPECT_THAT(fix.announced(), Contains("Upload stopped Nothing was sent").Times(1));
}

TEST(Announcements, TellWhatTheScanFound)
{
    WindowFixture fix;
    fix.model.launchSignedIn();
    fix.settle();
    fix.announced();
    fix.model.fail(ModelFixture::quest, URLError::Code::cannotConnectToHost);
    fix.settle();
    EXPECT_THAT(fix.announced(), Contains(HasSubstr("Vorn can't reach the server right now.")).Times(1));
}

} // namespace
} // namespace vorn::testing
