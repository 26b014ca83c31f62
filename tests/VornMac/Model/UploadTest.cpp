#include "tests/VornMac/Model/ModelFixture.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using testing::ModelFixture;
using testing::openedJSON;
using testing::questJSON;
using testing::RefusingFileManager;
using testing::submissionJSON;

UploadPhase failed(const std::string& text)
{
    return phase::Failed{text};
}

const UploadPhase idle = phase::Idle{};
const UploadPhase preparing = phase::Preparing{};
const UploadPhase finishing = phase::Finishing{};

UploadPhase uploading(double fraction)
{
    return phase::Uploading{fraction};
}

class Upload : public ::testing::Test {
protected:
    /// Reports that `bytes` of the waiting part have been sent, as the transfer does.
    void report(std::int64_t bytes)
    {
        const auto part = fix_.http->waiting(ModelFixture::puts).value();
        fix_.http->request(part).onBodyProgress(bytes);
        fix_.run();
    }
    void takePart()
    {
        const auto part = fix_.http->waiting(ModelFixture::puts).value();
        fix_.http->acknowledge(part, "\"tag-1\"");
        fix_.run();
    }
    std::int64_t partSize() const
    {
        return fix_.http->request(fix_.http->waiting(ModelFixture::puts).value()).body->size();
    }

    ModelFixture fix_;
};

TEST_F(Upload, GoesFromTheArchiveToTheReview)
{
    AppModel& model = fix_.launchFound();
    model.upload();
    EXPECT_EQ(model.step(), Step::upload);
    EXPECT_EQ(model.uploadPhase(), preparing);
    fix_.run();
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), uploading(0));
    EXPECT_THAT(fix_.leftovers(), ElementsAre(MatchesRegex("vorn-nimbrel-[0-9A-F-]{36}\\.zip")));
    fix_.answer(ModelFixture::creates, openedJSON());
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), uploading(0));

    const auto size = partSize();
    report(size / 2);
    EXPECT_EQ(model.uploadPhase(), uploading(static_cast<double>(size / 2) / static_cast<double>(size)));
    report(size);
    EXPECT_EQ(model.uploadPhase(), finishing);
    takePart();
    EXPECT_EQ(model.uploadPhase(), finishing);
    fix_.answer(ModelFixture::completes, submissionJSON("analyzing"));
    EXPECT_EQ(model.uploadPhase(), idle);
    EXPECT_EQ(model.step(), Step::done);
    EXPECT_EQ(model.submission().value().id, "sub-1");
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    EXPECT_EQ(fix_.changes().of("stepChanged"), 2);
}

/// An upload that ends too soon for its text to be read.
class ShortUpload : public Upload {
protected:
    ShortUpload() { fix_.shortestUpload = 800ms; }
    void upload(Clock::Duration sending)
    {
        fix_.launchUploading();
        report(partSize());
        fix_.advance(sending);
        takePart();
        fix_.answer(ModelFixture::completes, submissionJSON("analyzing"));
    }
};

TEST_F(ShortUpload, StaysFinishingUntilItCouldBeRead)
{
    upload(300ms);
    EXPECT_EQ(fix_.model().uploadPhase(), finishing);
    EXPECT_EQ(fix_.model().step(), Step::upload);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    fix_.advance(500ms - 1ns);
    EXPECT_EQ(fix_.model().step(), Step::upload);
    fix_.advance(1ns);
    EXPECT_EQ(fix_.model().step(), Step::done);
    EXPECT_EQ(fix_.model().submission().value().id, "sub-1");
    EXPECT_EQ(fix_.model().uploadPhase(), idle);
}

TEST_F(ShortUpload, WaitsForNothingOnceItHasBeenRead)
{
    upload(800ms);
    EXPECT_EQ(fix_.model().step(), Step::done);
}

TEST_F(ShortUpload, EndsWithTheUserWhoSignsOutWhileItStays)
{
    upload(0ms);
    fix_.model().signOut();
    fix_.run();
    fix_.advance(1s);
    EXPECT_EQ(fix_.model().step(), Step::link);
    EXPECT_EQ(fix_.model().submission(), std::nullopt);
}

TEST_F(ShortUpload, TellsOfAFailureAtOnce)
{
    fix_.launchUploading();
    fix_.http->answer(fix_.http->waiting(ModelFixture::puts).value(), 500);
    fix_.run();
    fix_.answer(ModelFixture::aborts);
    EXPECT_EQ(fix_.model().uploadPhase(), failed("Part 1 of the upload failed (500)."));
}

TEST_F(Upload, TellsTermsSizeAndDevice)
{
    fix_.launchFound().upload();
    fix_.runAll();
    const auto request = nlohmann::json::parse(fix_.http->body(fix_.http->waiting(ModelFixture::creates).value()));
    EXPECT_EQ(request.at("termsVersion"), "vorn-mac-nimbrel-1");
    EXPECT_EQ(request.at("sizeBytes"), std::filesystem::file_size(fix_.folder / "tmp" / fix_.leftovers().at(0)));
    EXPECT_EQ(request.at("partCount"), 1);
    EXPECT_TRUE(request.at("device").contains("timezone"));
}

TEST_F(Upload, DoesNothingUnlessItMay)
{
    AppModel& model = fix_.launchSignedIn();
    model.upload();
    EXPECT_EQ(model.step(), Step::find);
    fix_.answer(ModelFixture::quest, questJSON("submitted"));
    fix_.runAll();
    model.upload();
    fix_.runAll();
    EXPECT_EQ(model.step(), Step::find);
    EXPECT_EQ(model.uploadPhase(), idle);
    EXPECT_THAT(fix_.http->waiting(), IsEmpty());
}

TEST_F(Upload, RefusesAnArchiveAboveTheLimit)
{
    AppModel& model = fix_.launchSignedIn();
    fix_.answer(ModelFixture::quest, questJSON("available", R"("+15550102030")", 10));
    fix_.runAll();
    model.upload();
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), failed("Your chat is larger than the upload limit."));
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    EXPECT_THAT(fix_.http->waiting(), IsEmpty());
}

TEST_F(Upload, TakesAnArchiveOfExactlyTheLimit)
{
    fix_.launchFound().upload();
    fix_.runAll();
    const auto size = std::filesystem::file_size(fix_.folder / "tmp" / fix_.leftovers().at(0));
    for (const std::int64_t room : {0, -1}) {
        ModelFixture fix;
        fix.launchSignedIn();
        fix.answer(ModelFixture::quest,
                   questJSON("available", R"("+15550102030")", static_cast<std::int64_t>(size) + room));
        fix.runAll();
        fix.model().upload();
        fix.runAll();
        EXPECT_EQ(fix.isWaiting(ModelFixture::creates), room == 0);
    }
}

// Every upload has a quest and every quest a limit, so the largest limit stands for none.
TEST_F(Upload, IsNotRefusedByTheLargestLimit)
{
    AppModel& model = fix_.launchSignedIn();
    fix_.answer(ModelFixture::quest,
                questJSON("available", R"("+15550102030")", std::numeric_limits<std::int64_t>::max()));
    fix_.runAll();
    model.upload();
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), uploading(0));
}

TEST_F(Upload, ShowsWhyTheArchiveCouldNotBeMade)
{
    AppModel& model = fix_.launchFound();
    fix_.files.beforeWrite = RefusingFileManager::refuse(std::errc::no_space_on_device);
    model.upload();
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), failed("Something went wrong."));
    EXPECT_EQ(model.step(), Step::upload);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Upload, ShowsWhyItStoppedAndAborts)
{
    AppModel& model = fix_.launchUploading();
    fix_.http->answer(fix_.http->waiting(ModelFixture::puts).value(), 500);
    fix_.run();
    fix_.answer(ModelFixture::aborts);
    EXPECT_EQ(model.uploadPhase(), failed("Part 1 of the upload failed (500)."));
    EXPECT_EQ(model.step(), Step::upload);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    fix_.advance(1h);
    EXPECT_THAT(fix_.http->waiting(), IsEmpty()); // only the user tries again
}

TEST_F(Upload, MayBeTriedAgainFromTheFindStep)
{
    AppModel& model = fix_.launchFound();
    model.upload();
    fix_.runAll();
    fix_.fail(ModelFixture::creates, URLError::Code::cannotFindHost);
    EXPECT_EQ(model.uploadPhase(), failed("Vorn can't reach the server right now."));
    model.go(Step::find);
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.runAll();
    model.upload();
    EXPECT_EQ(model.uploadPhase(), preparing);
}

TEST_F(Upload, EndsWithTheSession)
{
    AppModel& model = fix_.launchFound();
    model.upload();
    fix_.runAll();
    fix_.refuse(ModelFixture::creates, 401);
    fix_.refuse(ModelFixture::refreshes, 401);
    EXPECT_EQ(model.step(), Step::link);
    EXPECT_EQ(model.uploadPhase(), idle);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Upload, SendsNothingMoreOnceTheUserHasSignedOut)
{
    fix_.launchUploading();
    fix_.model().signOut();
    fix_.runAll();
    EXPECT_EQ(fix_.asked(ModelFixture::aborts), 0U); // there is no session to send one with
    EXPECT_FALSE(fix_.isWaiting(ModelFixture::puts));
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

TEST_F(Upload, LeavesNoArchiveWhereverItIsCancelled)
{
    enum class Moment { packing, hashing, creating, sending, completing };
    for (const Moment moment :
         {Moment::packing, Moment::hashing, Moment::creating, Moment::sending, Moment::completing}) {
        SCOPED_TRACE(static_cast<int>(moment));
        ModelFixture fix;
        fix.launchFound();
        fix.model().upload();
        fix.run();
        if (moment > Moment::packing) {
            fix.background.run();
            fix.run();
        }
        if (moment > Moment::hashing) fix.runAll();
        if (moment > Moment::creating) {
            fix.answer(ModelFixture::creates, openedJSON());
            fix.runAll();
        }
        if (moment > Moment::sending) {
            fix.http->acknowledge(fix.http->waiting(ModelFixture::puts).value(), "\"tag\"");
            fix.run();
            EXPECT_TRUE(fix.isWaiting(ModelFixture::completes));
        }
        fix.model().scan(); // replaces the job
        fix.runAll();
        if (fix.isWaiting(ModelFixture::aborts)) fix.answer(ModelFixture::aborts);
        fix.runAll();
        EXPECT_EQ(fix.asked(ModelFixture::aborts), moment > Moment::creating ? 1U : 0U);
        EXPECT_THAT(fix.leftovers(), IsEmpty());
    }
}

TEST_F(Upload, TakesNoReportAfterItFailed)
{
    fix_.launchUploading();
    const auto part = fix_.http->waiting(ModelFixture::puts).value();
    const auto report = fix_.http->request(part).onBodyProgress;
    fix_.http->answer(part, 500);
    fix_.run();
    fix_.answer(ModelFixture::aborts);
    fix_.changes().forget();
    report(1);
    fix_.run();
    EXPECT_EQ(fix_.model().uploadPhase(), failed("Part 1 of the upload failed (500)."));
    EXPECT_EQ(fix_.changes().of("uploadPhaseChanged"), 0);
}

TEST_F(Upload, TakesNoReportAfterTheUserSignedOut)
{
    fix_.launchUploading();
    const auto report = fix_.http->request(fix_.http->waiting(ModelFixture::puts).value()).onBodyProgress;
    report(1); // on its way when the user signs out
    fix_.model().signOut();
    fix_.changes().forget();
    report(2);
    fix_.run();
    EXPECT_EQ(fix_.model().uploadPhase(), idle);
    EXPECT_EQ(fix_.changes().of("uploadPhaseChanged"), 0);
}

TEST_F(Upload, TakesNoReportOnceItWasReplaced)
{
    AppModel& model = fix_.launchUploading();
    const auto report = fix_.http->request(fix_.http->waiting(ModelFixture::puts).value()).onBodyProgress;
    report(1); // on its way when the scan begins
    model.go(Step::find);
    fix_.run();
    EXPECT_EQ(model.uploadPhase(), uploading(0));
}

TEST_F(Upload, TakesNoReportOfAnEarlierOne)
{
    AppModel& model = fix_.launchUploading();
    const auto report = fix_.http->request(fix_.http->waiting(ModelFixture::puts).value()).onBodyProgress;
    model.go(Step::find); // the upload continues until the scan replaces it
    fix_.answer(ModelFixture::quest, questJSON());
    fix_.runAll();
    model.upload();
    fix_.runAll();
    EXPECT_EQ(model.uploadPhase(), uploading(0));
    report(1);
    fix_.run();
    EXPECT_EQ(model.uploadPhase(), uploading(0));
}

TEST_F(Upload, TakesNoReportOnceTheModelIsGone)
{
    fix_.launchUploading();
    const auto report = fix_.http->request(fix_.http->waiting(ModelFixture::puts).value()).onBodyProgress;
    fix_.quit();
    report(1);
    fix_.run();
}

TEST_F(Upload, StaysFinishedWhenAPartIsSentAgain)
{
    fix_.launchUploading();
    report(partSize());
    EXPECT_EQ(fix_.model().uploadPhase(), finishing);
    report(0);
    EXPECT_EQ(fix_.model().uploadPhase(), finishing);
}

} // namespace
} // namespace vorn
