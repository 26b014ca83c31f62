#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "tests/VornMac/Model/ModelFixture.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::questJSON;
using testing::readFile;
using testing::RefusingFileManager;

const CopyPhase idle = phase::Idle{};
const CopyPhase preparing = phase::Preparing{};

CopyPhase saved(const std::string& name)
{
    return phase::Saved{name};
}

class Copy : public ::testing::Test {
protected:
    std::filesystem::path path() const { return fix_.folder / "mine.zip"; }
    std::string archiveOf(const AppModel& model) const
    {
        const auto path = fix_.folder / "expected.zip";
        NimbrelArchiveBuilder::writeArchive(*model.exportResult(),
                                            ExporterInfo::current(Bundle({{"CFBundleShortVersionString", "1.2.3"}})),
                                            path, fix_.clock.date());
        return readFile(path);
    }

    ModelFixture fix_;
};

TEST_F(Copy, IsTheVeryArchiveAndIsSentNowhere)
{
    AppModel& model = fix_.launchFound();
    const std::size_t sent = fix_.http->summaries().size();
    EXPECT_EQ(model.copyPhase(), idle);
    model.saveCopy(path());
    EXPECT_EQ(model.copyPhase(), preparing);
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), saved("mine.zip"));
    EXPECT_EQ(fix_.changes().of("copyPhaseChanged"), 2);
    EXPECT_EQ(readFile(path()), archiveOf(model));
    EXPECT_EQ(model.step(), Step::find);
    EXPECT_EQ(fix_.http->summaries().size(), sent);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Copy, HasTheBytesOfAnUploadAtTheSameTime)
{
    AppModel& model = fix_.launchFound();
    model.saveCopy(path());
    model.upload();
    fix_.runAll();
    EXPECT_EQ(readFile(path()), readFile(fix_.folder / "tmp" / fix_.leftovers().at(0)));
}

TEST_F(Copy, ReplacesWhatIsThere)
{
    AppModel& model = fix_.launchFound();
    for (const auto& pause : {0s, 60s}) {
        fix_.advance(pause);
        model.saveCopy(path());
        fix_.runAll();
        EXPECT_EQ(readFile(path()), archiveOf(model));
    }
}

TEST_F(Copy, NeedsSomethingThatWasFound)
{
    AppModel& model = fix_.launchSignedIn();
    model.saveCopy(path());
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), idle);
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(Copy, SaysWhyItCannotBeWritten)
{
    AppModel& model = fix_.launchFound();
    fix_.files.beforeWrite = RefusingFileManager::refuse(std::errc::no_space_on_device);
    model.saveCopy(path());
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), CopyPhase(phase::Failed{"Vorn couldn't write the archive to " + path().string() +
                                                         ": No space left on device."}));
    EXPECT_THAT(fix_.log.lines(), ElementsAre("[app] copy of the archive failed: No space left on device"));
    fix_.files.beforeWrite = nullptr;
    model.saveCopy(path());
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), saved("mine.zip"));
}

TEST_F(Copy, IsForgottenWithWhatItIsACopyOf)
{
    AppModel& model = fix_.launchFound();
    model.saveCopy(path());
    fix_.runAll();
    model.go(Step::find);
    EXPECT_EQ(model.copyPhase(), saved("mine.zip"));
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), idle);
    model.saveCopy(path());
    fix_.runAll();
    model.signOut();
    EXPECT_EQ(model.copyPhase(), idle);
}

TEST_F(Copy, LeavesNothingWhenTheSessionEnds)
{
    AppModel& model = fix_.launchFound();
    model.saveCopy(path());
    fix_.run();
    model.signOut();
    fix_.runAll();
    EXPECT_EQ(model.copyPhase(), idle);
    EXPECT_FALSE(std::filesystem::exists(path()));
}

} // namespace
} // namespace vorn
