#include "Tools/Terminal/StateLines.h"

#include "tests/VornMac/Model/ModelFixture.h"

#include <cstdio>

#include <gmock/gmock.h>

namespace vorn {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::ModelFixture;
using ::testing::Not;

/// The lines of a model that goes from its first step to the review.
std::string linesOfAnUpload()
{
    ModelFixture fix;
    const testing::TemporaryFolder folder;
    std::FILE* file = std::fopen((folder / "lines").c_str(), "w");
    fix.launchFound();
    {
        const StateLines lines(fix.model(), file);
        fix.model().upload();
        fix.runAll();
        fix.answer(ModelFixture::creates, testing::openedJSON());
        fix.runAll();
        const auto part = fix.http->waiting(ModelFixture::puts).value();
        fix.http->request(part).onBodyProgress(fix.http->request(part).body->size());
        fix.http->acknowledge(part, "\"tag\"");
        fix.run();
        fix.answer(ModelFixture::completes, testing::submissionJSON("analyzing"));
        fix.model().endSession();
        EXPECT_TRUE(lines.hasWritten());
    }
    std::fclose(file);
    return testing::readFile(folder / "lines");
}

TEST(StateLines, TellEveryChangeInOrder)
{
    EXPECT_EQ(linesOfAnUpload(), R"({"step":"find"}
{"step":"upload"}
{"uploadPhase":{"phase":"preparing"}}
{"uploadPhase":{"phase":"uploading","fraction":0.0}}
{"uploadPhase":{"phase":"finishing"}}
{"step":"done"}
{"submission":{"id":"sub-1","status":"analyzing","rejectionReasonKey":null,"rewardUsd":null}}
{"uploadPhase":{"phase":"idle"}}
{"step":"link"}
{"session":null}
{"nimbrel":null}
{"export":null}
{"submission":null}
{"scanPhase":{"phase":"idle"}}
)");
}

TEST(StateLines, NoticeThatNobodyReadsThem)
{
    ModelFixture fix;
    fix.launchSignedIn();
    std::FILE* refusing = std::fopen("/dev/null", "r"); // accepts nothing
    const StateLines lines(fix.model(), refusing);
    EXPECT_FALSE(lines.hasWritten());
    std::fclose(refusing);
}

} // namespace
} // namespace vorn
