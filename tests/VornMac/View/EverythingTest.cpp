#include "VornMac/View/Everything.h"

#include "tests/VornMac/View/ScreenFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::ModelFixture;
using testing::questJSON;
using testing::readFile;
using testing::ScreenFixture;

class EverythingPage : public ::testing::Test {
protected:
    /// With a found chat of three messages; a reaction and an empty row are left out.
    void find()
    {
        screen_.fix.messages.message({.associatedMessageType = std::int64_t{2000}});
        screen_.fix.messages.message({.text = std::string()});
        screen_.fix.launchFound();
        screen_.show();
    }
    Everything& page() { return *screen_.screen().everything(); }
    AppModel& model() { return screen_.fix.model(); }

    ScreenFixture screen_;
};

TEST_F(EverythingPage, OpensOnceSomethingIsFound)
{
    screen_.fix.launchSignedIn();
    screen_.show();
    page().open();
    EXPECT_FALSE(page().isOpen());
    screen_.fix.answer(ModelFixture::quest, questJSON());
    screen_.fix.runAll();
    int told = 0;
    QObject::connect(&page(), &Everything::isOpenChanged, &page(), [&told] { ++told; });
    page().open();
    page().open();
    EXPECT_TRUE(page().isOpen());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(page().messages()->rowCount(), 3);
    page().close();
    page().close();
    EXPECT_FALSE(page().isOpen());
    EXPECT_EQ(told, 2);
    EXPECT_EQ(page().messages()->rowCount(), 0);
}

TEST_F(EverythingPage, SaysWhatIsLeftOut)
{
    find();
    page().open();
    EXPECT_EQ(page().leftOutLabels(), QStringList({"Reactions", "Empty messages"}));
    EXPECT_EQ(page().leftOutCounts(), QStringList({"1", "1"}));
    EXPECT_EQ(page().leftOutReasons(),
              QStringList({"Hearts, thumbs and other tapbacks.", "They have neither text nor attachments."}));
    EXPECT_EQ(page().leftOutNote(), "The files of attachments are never read.");
    EXPECT_TRUE(page().besides().at(1).contains("+15550102030"));
}

TEST_F(EverythingPage, CountsWhatIsListed)
{
    find();
    screen_.fix.messages.message({.text = std::string("Tram")});
    page().open();
    EXPECT_EQ(page().listed(), "3 messages") << "what was found, not what came since";
    page().setWords("hel");
    screen_.fix.runAll();
    EXPECT_EQ(page().listed(), "3 of 3 messages");
    EXPECT_EQ(page().nothingFound(), "");
    page().setWords(" ferry ");
    EXPECT_EQ(page().nothingFound(), "") << "before it is known";
    screen_.fix.runAll();
    EXPECT_EQ(page().listed(), "0 of 3 messages");
    EXPECT_EQ(page().nothingFound(), "No message contains “ferry”.");
    page().close();
    EXPECT_EQ(page().words(), "");
}

TEST_F(EverythingPage, ClosesWithTheStep)
{
    for (void (*leave)(AppModel&) :
         {+[](AppModel& model) { model.go(Step::consent); }, +[](AppModel& model) { model.upload(); },
          +[](AppModel& model) { model.signOut(); }}) {
        ScreenFixture screen;
        AppModel& model = screen.fix.launchFound();
        Everything& page = *screen.show().everything();
        page.open();
        ASSERT_TRUE(page.isOpen());
        leave(model);
        EXPECT_FALSE(page.isOpen());
    }
}

TEST_F(EverythingPage, ClosesWhenTheChatIsLookedForAgain)
{
    find();
    page().open();
    model().go(Step::find);
    EXPECT_FALSE(page().isOpen());
    page().open();
    EXPECT_FALSE(page().isOpen()) << "until it is found";
}

TEST_F(EverythingPage, StaysClosedOnAScreenThatGoes)
{
    find();
    QObject screen;
    Everything& gone = *screen_.screen().asItWas(&screen)->everything();
    gone.open();
    gone.saveCopy(QUrl::fromLocalFile("/nowhere"));
    EXPECT_FALSE(gone.isOpen());
    EXPECT_FALSE(gone.isSaving());
    EXPECT_EQ(gone.copyStatus(), ShownStatus());
}

TEST_F(EverythingPage, SavesACopy)
{
    find();
    const auto path = screen_.fix.folder / "Köln #1.zip";
    const QUrl file = QUrl::fromLocalFile(QString::fromStdString(path.string()));
    page().saveCopy(file);
    EXPECT_FALSE(page().isSaving()) << "while it is closed";
    page().open();
    page().saveCopy(QUrl("https://example.com/x.zip"));
    EXPECT_FALSE(page().isSaving());
    page().saveCopy(file);
    EXPECT_TRUE(page().isSaving());
    EXPECT_EQ(page().copyStatus().text, "Packing your chat…");
    screen_.fix.runAll();
    EXPECT_FALSE(page().isSaving());
    EXPECT_EQ(page().copyStatus().text, "Saved as Köln #1.zip on this Mac.");
    EXPECT_TRUE(readFile(path).starts_with("PK"));
}

TEST_F(EverythingPage, SuggestsTheArchivesName)
{
    EXPECT_EQ(Everything::suggestedFile().fileName(), "vorn-nimbrel-export.zip");
    EXPECT_TRUE(Everything::suggestedFile().isLocalFile());
}

} // namespace
} // namespace vorn
