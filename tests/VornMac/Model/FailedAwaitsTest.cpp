#include "tests/VornMac/Model/ModelState.h"
#include "tests/VornMac/Model/SuspensionPoints.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::ModelState;
using testing::RefusingFileManager;
using testing::SuspendedModel;
using testing::SuspensionPoint;
using Flow = SuspensionPoint::Flow;
using Lines = std::vector<std::string>;

/// How a request can fail.
enum class Failure { noAnswer, serverError, undecodable, notAuthorized };

struct Case {
    SuspensionPoint point;
    Failure failure;
};

void PrintTo(const Case& value, std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *out << value.point.name;
}

std::string nameOf(const ::testing::TestParamInfo<Case>& info)
{
    constexpr std::array names{"WithoutAnAnswer", "WithAServerError", "WithAnUndecodableAnswer", "NotAuthorized"};
    return info.param.point.name + names.at(static_cast<std::size_t>(info.param.failure));
}

std::vector<Case> casesIf(bool (*isMeant)(const SuspensionPoint& point))
{
    std::vector<Case> result;
    for (const auto& point : testing::suspensionPoints()) {
        if (point.awaited.empty() || !isMeant(point)) continue;
        for (const Failure failure :
             {Failure::noAnswer, Failure::serverError, Failure::undecodable, Failure::notAuthorized})
            result.push_back({point, failure});
    }
    return result;
}

class FailedAwait : public ::testing::TestWithParam<Case> {
protected:
    bool is(Failure failure) const { return GetParam().failure == failure; }
    bool awaits(const char* request) const { return GetParam().point.awaited == request; }
    ModelState state() { return ModelState::of(fix_.model()); }

    /// Fails the awaited request, and the refresh that follows a 401.
    void fail()
    {
        switch (GetParam().failure) {
        case Failure::noAnswer: return suspended_.fail(URLError::Code::timedOut);
        case Failure::serverError: return suspended_.answerOnly(500, testing::errorJSON("Try later.", "busy"));
        case Failure::undecodable: return suspended_.answerOnly(201, "<html>");
        case Failure::notAuthorized: suspended_.answerOnly(401, "");
        }
        if (fix_.isWaiting(ModelFixture::refreshes)) fix_.refuse(ModelFixture::refreshes, 401);
    }
    /// Answers the same request again, this time with success, which is too late.
    void answerAgain()
    {
        suspended_.answerOnly(200, GetParam().point.success);
        fix_.runAll();
    }

    /// The failure as the user sees it, and as the log records it.
    std::string shown() const
    {
        switch (GetParam().failure) {
        case Failure::noAnswer: return "The connection timed out. Vorn will retry.";
        case Failure::serverError: return "Try later.";
        case Failure::undecodable: return "The server sent an answer Vorn could not read.";
        case Failure::notAuthorized: return "Your Mac is no longer linked. Link it again.";
        }
        return "";
    }
    std::string logged() const
    {
        switch (GetParam().failure) {
        case Failure::noAnswer: return "The request timed out.";
        case Failure::serverError: return "HTTP 500: Try later.";
        case Failure::undecodable: return "unreadable answer";
        case Failure::notAuthorized: return "session not accepted";
        }
        return "";
    }

    /// The lines about unreadable answers, followed by `line`, if there is one.
    Lines lines(const std::string& record, const std::string& line = "") const
    {
        Lines expected;
        if (is(Failure::undecodable)) expected.push_back("[api] undecodable " + record + " answer");
        if (!line.empty()) expected.push_back(line);
        return expected;
    }

    /// The service has ended the session: nothing of it is left, here or in the store.
    void expectSessionEnd(const ModelState& before)
    {
        EXPECT_EQ(state(), before.afterSessionEnd());
        EXPECT_EQ(fix_.tokens->load(), std::nullopt);
        EXPECT_EQ(fix_.context.runningTasks(), 1U);
        EXPECT_THAT(fix_.http->waiting(), ElementsAre(ModelFixture::links));
        EXPECT_THAT(fix_.leftovers(), IsEmpty());
    }

    SuspendedModel suspended_{GetParam().point};
    ModelFixture& fix_ = suspended_.fix;
};

class FailedLinking : public FailedAwait {};

TEST_P(FailedLinking, IsShownForFiveSecondsWithoutTheCode)
{
    ModelState expected = state();
    fail();
    expected.linkPhase = phase::Failed{shown()};
    expected.qrPayload.reset();
    expected.linkExpiresAt.reset();
    EXPECT_EQ(state(), expected);
    answerAgain();
    EXPECT_EQ(state(), expected);
    fix_.advance(5s - 1ns);
    EXPECT_EQ(state(), expected);
    fix_.advance(1ns);
    EXPECT_THAT(fix_.http->waiting(), ElementsAre(ModelFixture::links));
    EXPECT_EQ(fix_.context.runningTasks(), 1U);
    EXPECT_EQ(fix_.log.lines(), lines(awaits(ModelFixture::links) ? "DeviceLink" : "DeviceLinkPoll"));
}

INSTANTIATE_TEST_SUITE_P(, FailedLinking, ::testing::ValuesIn(casesIf([](const SuspensionPoint& point) {
                             return point.flow == Flow::link;
                         })),
                         nameOf);

class FailedPrefetch : public FailedAwait {};

TEST_P(FailedPrefetch, IsLoggedOnlyUnlessItEndsTheSession)
{
    const ModelState before = state();
    fail();
    if (is(Failure::notAuthorized)) return expectSessionEnd(before);
    answerAgain();
    EXPECT_EQ(state(), before);
    EXPECT_EQ(fix_.log.lines(), lines("NimbrelState", "[app] nimbrel prefetch failed: " + logged()));
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
}

INSTANTIATE_TEST_SUITE_P(, FailedPrefetch, ::testing::ValuesIn(casesIf([](const SuspensionPoint& point) {
                             return point.flow == Flow::prefetch;
                         })),
                         nameOf);

class FailedScan : public FailedAwait {};

TEST_P(FailedScan, IsShownUnlessItEndsTheSession)
{
    const ModelState before = state();
    fail();
    const bool refreshRefused = awaits(ModelFixture::refreshes) && is(Failure::serverError);
    if (is(Failure::notAuthorized) || refreshRefused) return expectSessionEnd(before);
    answerAgain();
    ModelState expected = before;
    expected.scanPhase = phase::Failed{shown()};
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(fix_.log.lines(), lines(awaits(ModelFixture::refreshes) ? "TokenPair" : "NimbrelState"));
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
    fix_.model().scan(); // "try again"
    fix_.run();
    EXPECT_TRUE(fix_.isWaiting(ModelFixture::quest));
}

INSTANTIATE_TEST_SUITE_P(, FailedScan, ::testing::ValuesIn(casesIf([](const SuspensionPoint& point) {
                             return point.flow == Flow::scan;
                         })),
                         nameOf);

class FailedUpload : public FailedAwait {
protected:
    bool sendsAPart() const { return awaits(ModelFixture::puts); }
    bool aborts() const { return awaits(ModelFixture::aborts); }

    std::string shownText() const
    {
        if (aborts()) return "Part 1 of the upload failed (500)."; // as before
        if (!sendsAPart() || is(Failure::noAnswer)) return shown();
        if (is(Failure::undecodable)) return "Part 1 of the upload was not acknowledged.";
        return is(Failure::serverError) ? "Part 1 of the upload failed (500)." : "Part 1 of the upload failed (401).";
    }
    /// The log after the upload failed; an abort that follows the failure is accepted.
    Lines expectedLines() const
    {
        // An abort's answer is not read.
        if (aborts() && is(Failure::undecodable)) return {};
        if (aborts()) return {"[upload] abort after a failed upload failed: " + logged()};
        if (sendsAPart()) return {};
        if (awaits(ModelFixture::creates)) return lines("SubmissionUpload");
        return lines(awaits(ModelFixture::completes) ? "SubmissionStatus" : "PartUrls");
    }
};

TEST_P(FailedUpload, IsShownAndAbortedUnlessItEndsTheSession)
{
    const ModelState before = state();
    const auto abortsBefore = fix_.asked(ModelFixture::aborts);
    fail();
    if (is(Failure::notAuthorized) && !sendsAPart() && !aborts()) {
        EXPECT_EQ(fix_.asked(ModelFixture::aborts), 0U); // there is no session to send one with
        return expectSessionEnd(before);
    }
    EXPECT_EQ(fix_.asked(ModelFixture::aborts) - abortsBefore, GetParam().point.opened && !aborts() ? 1U : 0U);
    answerAgain();
    if (fix_.isWaiting(ModelFixture::aborts)) fix_.answer(ModelFixture::aborts);
    ModelState expected = before;
    expected.uploadPhase = phase::Failed{shownText()};
    EXPECT_EQ(state(), expected);
    EXPECT_EQ(fix_.log.lines(), expectedLines());
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, FailedUpload, ::testing::ValuesIn(casesIf([](const SuspensionPoint& point) {
                             return point.flow == Flow::upload;
                         })),
                         nameOf);

class FailedReview : public FailedAwait {};

TEST_P(FailedReview, IsLoggedAndAskedForAgainUnlessItEndsTheSession)
{
    const ModelState before = state();
    fail();
    if (is(Failure::notAuthorized)) return expectSessionEnd(before);
    answerAgain();
    EXPECT_EQ(state(), before);
    const std::string record = awaits(ModelFixture::quest) ? "NimbrelState" : "SubmissionStatus";
    EXPECT_EQ(fix_.log.lines(), lines(record, "[app] submission poll failed: " + logged()));
    EXPECT_THAT(fix_.http->waiting(), IsEmpty());
    fix_.advance(5s);
    EXPECT_TRUE(fix_.isWaiting(ModelFixture::review));
    EXPECT_EQ(fix_.context.runningTasks(), 1U);
}

INSTANTIATE_TEST_SUITE_P(, FailedReview, ::testing::ValuesIn(casesIf([](const SuspensionPoint& point) {
                             return point.flow == Flow::review;
                         })),
                         nameOf);

/// Background work awaits no answer: it fails by itself.
struct BackgroundCase {
    const char* point;
    void (*breakWork)(ModelFixture& fix);
    void (*expect)(ModelState& state);
    std::size_t aborts = 0;
};

void PrintTo(const BackgroundCase& value, std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *out << value.point;
}

void removeTheArchive(ModelFixture& fix)
{
    for (const auto& name : fix.leftovers()) std::filesystem::remove(fix.folder / "tmp" / name);
}
void failUpload(ModelState& state)
{
    state.uploadPhase = phase::Failed{"Something went wrong."};
}

class FailedBackgroundWork : public ::testing::TestWithParam<BackgroundCase> {};

TEST_P(FailedBackgroundWork, IsShown)
{
    const auto& points = testing::suspensionPoints();
    SuspendedModel suspended(
        *std::find_if(points.begin(), points.end(), [](const auto& point) { return point.name == GetParam().point; }));
    ModelFixture& fix = suspended.fix;
    ModelState expected = ModelState::of(fix.model());
    GetParam().breakWork(fix);
    GetParam().expect(expected);
    fix.runAll();
    EXPECT_EQ(fix.asked(ModelFixture::aborts), GetParam().aborts);
    if (fix.isWaiting(ModelFixture::aborts)) fix.answer(ModelFixture::aborts);
    EXPECT_EQ(ModelState::of(fix.model()), expected);
    EXPECT_EQ(fix.context.runningTasks(), 0U);
    EXPECT_THAT(fix.leftovers(), IsEmpty());
    EXPECT_THAT(fix.log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, FailedBackgroundWork,
                         ::testing::Values(BackgroundCase{"ScanReadsMessages",
                                                          [](ModelFixture& fix) {
                                                              fix.files.beforeCopy = RefusingFileManager::refuse(
                                                                  std::errc::no_space_on_device);
                                                          },
                                                          [](ModelState& state) {
                                                              state.scanPhase = phase::Failed{"Something went wrong."};
                                                          }},
                                           BackgroundCase{"UploadPacksTheArchive",
                                                          [](ModelFixture& fix) {
                                                              fix.files.beforeWrite = RefusingFileManager::refuse(
                                                                  std::errc::no_space_on_device);
                                                          },
                                                          failUpload},
                                           BackgroundCase{"UploadHashesTheArchive", removeTheArchive, failUpload},
                                           BackgroundCase{"UploadOpensTheArchive", removeTheArchive, failUpload, 1}),
                         [](const auto& info) { return std::string(info.param.point); });

} // namespace
} // namespace vorn
