#include "tests/VornMac/Window/Scenes.h"
#include "tests/support/sanitizers/ForeignLeaks.h"

#include <optional>

#include <gmock/gmock.h>

// The effect of each control, by every way to use it.
namespace vorn::testing {
namespace {

using ::testing::AnyOf;

enum class Way { mouse, space, returnKey, reader };

constexpr std::pair<Way, const char*> ways[] = {
    {Way::mouse, "mouse"}, {Way::space, "space"}, {Way::returnKey, "return"}, {Way::reader, "screen reader"}};

void use(WindowFixture& fix, const std::string& control, Way way)
{
    const QString name = QString::fromStdString(control);
    switch (way) {
    case Way::mouse: fix.click(name); return;
    case Way::space: fix.pressOn(name, Qt::Key_Space); return;
    case Way::returnKey: fix.pressOn(name, Qt::Key_Return); return;
    case Way::reader: fix.pressByReader(name); return;
    }
}

struct Control {
    const char* scene;
    const char* name;
    std::function<bool(WindowFixture&)> hasWorked;
};

bool called(WindowFixture& fix, const std::string& beginning)
{
    const auto& calls = fix.model.workspace.calls;
    return calls.size() == 1 && calls.front().starts_with(beginning);
}

auto leadsTo(Step step)
{
    return [step](WindowFixture& fix) { return fix.model.model().step() == step; };
}

const std::vector<Control>& allControls()
{
    static const std::vector<Control> controls = {
        {"0-keychain-refused", "Try again",
         [](auto& fix) { return fix.model.model().restorePhase() == RestorePhase(phase::Waiting{}); }},
        {"0-keychain-refused", "Link this Mac again",
         [](auto& fix) { return fix.model.asked(ModelFixture::links) == 1; }},
        {"1-link-failed", "Try again", [](auto& fix) { return fix.model.asked(ModelFixture::links) == 2; }},
        {"2-consent", "I understand what's uploaded", [](auto& fix) { return fix.model.model().understandsUpload(); }},
        {"2-consent", "I agree to share my Nimbrel chat", [](auto& fix) { return fix.model.model().agreesToShare(); }},
        {"2-consent-ready", "I understand what's uploaded",
         [](auto& fix) { return !fix.model.model().understandsUpload(); }},
        {"2-consent-ready", "I agree to share my Nimbrel chat",
         [](auto& fix) { return !fix.model.model().agreesToShare(); }},
        {"2-consent-ready", "Continue", leadsTo(Step::find)},
        {"2-consent", "Account", [](auto& fix) { return fix.shows("Sign out of this Mac"); }},
        {"3-access-denied", "Open System Settings", [](auto& fix) { return called(fix, "open "); }},
        {"3-access-denied", "Show Vorn in Finder", [](auto& fix) { return called(fix, "reveal"); }},
        {"3-access-denied", "Quit & Reopen Vorn", [](auto& fix) { return called(fix, "relaunch"); }},
        {"3-access-denied", "Back", leadsTo(Step::consent)},
        {"3-access-granted", "Continue", leadsTo(Step::find)},
        {"4-find-found-in-review", "Look again", [](auto& fix) { return fix.model.asked(ModelFixture::quest) == 2; }},
        {"4-find-failed", "Look again", [](auto& fix) { return fix.model.asked(ModelFixture::quest) == 2; }},
        {"4-find-found", "Back", leadsTo(Step::consent)},
        {"4-find-found", "Upload chat", leadsTo(Step::upload)},
        {"4-find-found", "See everything we upload",
         [](auto& fix) { return fix.shows("Everything we upload Your Nimbrel chat"); }},
        {"4-find-everything-searched", "Clear search",
         [](auto& fix) { return fix.screenModel().everything()->words().isEmpty(); }},
        {"4-find-everything", "Save a copy…",
         [](auto& fix) { return fix.window().template findChild<QObject*>("saveCopy") != nullptr; }},
        {"4-find-everything", "Back", [](auto& fix) { return fix.shows("Found on this Mac Your Nimbrel chat"); }},
        {"5-upload-failed", "Try again", leadsTo(Step::find)},
        {"6-done-expired", "Back to your chat", leadsTo(Step::find)},
    };
    return controls;
}

TEST(Controls, DoTheirWorkInEveryWay)
{
    for (const Control& control : allControls()) {
        for (const auto& [way, wayName] : ways) {
            SCOPED_TRACE(std::string(control.scene) + ", " + control.name + ", " + wayName);
            WindowFixture fix;
            play(fix, control.scene);
            EXPECT_FALSE(control.hasWorked(fix));
            std::optional<ForeignLeaks> ofQt; // Qt's own dialog may leak its icons' textures in any frame
            if (control.name == std::string_view("Save a copy…")) ofQt.emplace();
            use(fix, control.name, way);
            EXPECT_TRUE(control.hasWorked(fix));
        }
    }
}

TEST(Controls, AreAllInTheTable)
{
    std::set<std::string> written;
    for (const Control& control : allControls()) written.insert(control.name);
    for (const Scene& scene : allScenes()) {
        SCOPED_TRACE(scene.name);
        WindowFixture fix;
        play(fix, scene.name);
        for (const Read& read : fix.reading()) {
            if (read.isControl()) EXPECT_TRUE(written.contains(read.name)) << read.name;
        }
    }
}

TEST(Controls, ThatAreOffTakeNoFocusAndDoNothing)
{
    struct Case {
        const char* scene;
        const char* name;
    };
    for (const Case& row : {
             Case{"2-consent", "Continue"},
             Case{"2-consent-understood", "Continue"},
             Case{"4-find-loading", "Upload chat"},
             Case{"4-find-found-in-review", "Upload chat"},
             Case{"4-find-found-cooldown", "Upload chat"},
         }) {
        SCOPED_TRACE(std::string(row.scene) + ", " + row.name);
        WindowFixture fix;
        play(fix, row.scene);
        EXPECT_FALSE(fix.isEnabled(row.name));
        for (const Read& read : fix.reading()) {
            if (read.isControl() && read.name == row.name) EXPECT_FALSE(read.state.focusable);
        }
        const Step before = fix.model.model().step();
        const std::size_t sent = fix.model.http->summaries().size();
        for (const auto& [way, wayName] : ways) {
            SCOPED_TRACE(wayName);
            use(fix, row.name, way);
            EXPECT_NE(fix.focused(), row.name);
            EXPECT_EQ(fix.model.model().step(), before);
            EXPECT_EQ(fix.model.http->summaries().size(), sent);
        }
    }
}

TEST(Controls, AreOnWhereTheUserCanGoOn)
{
    struct Case {
        const char* scene;
        const char* name;
    };
    for (const Case& row : {Case{"2-consent-ready", "Continue"}, Case{"3-access-granted", "Continue"},
                            Case{"4-find-found", "Upload chat"}, Case{"4-find-found-rejected", "Upload chat"}}) {
        SCOPED_TRACE(row.scene);
        WindowFixture fix;
        play(fix, row.scene);
        EXPECT_TRUE(fix.isEnabled(row.name));
    }
}

TEST(Controls, LeadOnOnlyByTheNextThingToDo)
{
    struct Case {
        const char* scene;
        const char* next;
        const char* later;
    };
    for (const Case& row :
         {Case{"3-access-denied", "Open System Settings", "Continue"},
          Case{"3-access-no-database", "Open System Settings", "Continue"},
          Case{"3-access-granted", "Continue", "Open System Settings"},
          Case{"4-find-unavailable", "Look again", "Upload chat"},
          Case{"4-find-not-configured", "Look again", "Upload chat"},
          Case{"4-find-not-found", "Look again", "Upload chat"}, Case{"4-find-failed", "Look again", "Upload chat"},
          Case{"4-find-found", "Upload chat", "Look again"}}) {
        SCOPED_TRACE(row.scene);
        WindowFixture fix;
        play(fix, row.scene);
        EXPECT_TRUE(fix.isEnabled(row.next));
        EXPECT_FALSE(fix.shows(row.later));
    }
}

TEST(Controls, LeadQuietlyAwayFromAReviewThatGoesOn)
{
    for (const auto& [scene, isQuiet] : {std::pair("6-done-analyzing", true), std::pair("6-done-review-pending", true),
                                         std::pair("6-done-approved", false), std::pair("6-done-rejected", false),
                                         std::pair("6-done-expired", false)}) {
        SCOPED_TRACE(scene);
        WindowFixture fix;
        play(fix, scene);
        EXPECT_EQ(fix.named("Back to your chat")->property("isQuiet").toBool(), isQuiet);
    }
}

TEST(Controls, KeepAnAmpersandInTheirName)
{
    WindowFixture fix;
    play(fix, "3-access-denied");
    EXPECT_THAT(fix.words(), ::testing::Contains("Quit & Reopen Vorn")); // drawn unchanged
    EXPECT_THAT(fix.spoken(), ::testing::Contains(AnyOf("Button: Quit & Reopen Vorn", "Link: Quit & Reopen Vorn")));
    EXPECT_FALSE(fix.named("Quit & Reopen Vorn")->childItems().isEmpty());
}

} // namespace
} // namespace vorn::testing
