#include "tests/VornMac/Model/SuspensionPoints.h"
#include "tests/VornMac/Model/ModelState.h"
#include "tests/support/service/ServiceAnswers.h"

#include <gmock/gmock.h>

namespace vorn {
namespace {

using testing::adasSession;
using testing::belasSession;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::ModelFixture;
using testing::ModelState;
using ::testing::Not;
using testing::Reply;
using testing::SuspendedModel;
using testing::SuspensionPoint;
using testing::UserAction;
using Flow = SuspensionPoint::Flow;

constexpr auto abortRefused = "[upload] abort after a failed upload failed: session of another user";

/// What happens to a waiting job, and the late reply to it.
struct Case {
    SuspensionPoint point;
    Reply late = Reply::success;
    UserAction cancel = {};

    bool isAborting() const { return point.awaited == ModelFixture::aborts; }
    bool isRefreshing() const { return point.awaited == ModelFixture::refreshes; }
};

void PrintTo(const Case& value, std::ostream* out) // NOLINT(readability-identifier-naming): GoogleTest's
{
    *out << value.point.name << value.cancel.name;
}

std::string nameOf(const ::testing::TestParamInfo<Case>& info)
{
    const auto& [point, late, cancel] = info.param;
    return point.name + cancel.name + (late == Reply::notAuthorized ? "AndIsRefused" : "");
}

/// Every point; those that wait for the service once for each reply.
std::vector<Case> cases()
{
    std::vector<Case> result;
    for (const auto& point : testing::suspensionPoints()) {
        result.push_back({point});
        if (!point.awaited.empty()) result.push_back({point, Reply::notAuthorized});
    }
    return result;
}

std::vector<Case> casesWithCancel()
{
    std::vector<Case> result;
    for (const auto& each : cases())
        for (const auto& cancel : cancelsOf(each.point.flow)) result.push_back({each.point, each.late, cancel});
    return result;
}

std::vector<Case> casesWithSession()
{
    auto result = cases();
    std::erase_if(result, [](const Case& each) { return each.point.flow == Flow::link; });
    return result;
}

std::vector<Case> casesThatOutliveTheirStep()
{
    auto result = cases();
    std::erase_if(result, [](const Case& each) {
        const Flow flow = each.point.flow;
        return each.late != Reply::success || (flow != Flow::prefetch && flow != Flow::scan && flow != Flow::upload);
    });
    return result;
}

class SuspensionPoints : public ::testing::TestWithParam<Case> {
protected:
    ModelState state() { return ModelState::of(suspended_.fix.model()); }
    const Case& param() const { return GetParam(); }

    /// Sends the late reply, which must change nothing and leave nothing behind.
    void expectNoEffectOfALateReply(const ModelState& expected)
    {
        fix_.run();
        EXPECT_EQ(state(), expected);
        suspended_.answer(param().late);
        EXPECT_EQ(state(), expected);
        EXPECT_THAT(fix_.leftovers(), IsEmpty());
    }
    /// Answers the requests of the clean-up, after which one job must be left.
    void expectOneJob()
    {
        if (fix_.isWaiting(ModelFixture::refreshes)) fix_.refuse(ModelFixture::refreshes, 401);
        if (fix_.isWaiting(ModelFixture::aborts)) fix_.answer(ModelFixture::aborts);
        if (fix_.isWaiting(ModelFixture::revokes)) fix_.answer(ModelFixture::revokes, testing::revokedJSON);
        EXPECT_EQ(fix_.context.runningTasks(), 1U) << ::testing::PrintToString(fix_.http->waiting());
        EXPECT_THAT(fix_.leftovers(), IsEmpty());
    }
    std::size_t aborts() const { return fix_.asked(ModelFixture::aborts); }

    SuspendedModel suspended_{GetParam().point};
    ModelFixture& fix_ = suspended_.fix;
};

class CancelledJob : public SuspensionPoints {};

TEST_P(CancelledJob, WritesNothing)
{
    const auto stored = fix_.tokens->load();
    param().cancel.run(fix_.model());
    const ModelState expected = state();
    fix_.runAll();
    EXPECT_EQ(aborts(), param().point.opened ? 1U : 0U);
    EXPECT_EQ(state(), expected);
    suspended_.answer(param().late);
    EXPECT_EQ(state(), expected);
    expectOneJob();
    const bool abortIsRefused = param().isAborting() && param().late == Reply::notAuthorized;
    EXPECT_EQ(fix_.log.lines().size(), abortIsRefused ? 1U : 0U);
    if (abortIsRefused || (param().isRefreshing() && param().late == Reply::notAuthorized))
        EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    else if (param().isRefreshing())
        EXPECT_EQ(fix_.tokens->load(), adasSession(2)); // a refresh continues for the next caller
    else
        EXPECT_EQ(fix_.tokens->load(), stored);
}

INSTANTIATE_TEST_SUITE_P(, CancelledJob, ::testing::ValuesIn(casesWithCancel()), nameOf);

class JobOfAnEndedSession : public SuspensionPoints {};

TEST_P(JobOfAnEndedSession, WritesNothing)
{
    const auto abortsBefore = aborts();
    const ModelState expected = state().afterSessionEnd();
    fix_.model().signOut();
    expectNoEffectOfALateReply(expected);
    expectOneJob();
    EXPECT_EQ(aborts(), abortsBefore); // there is no session to send one with
    EXPECT_EQ(fix_.tokens->load(), std::nullopt);
    const bool abortWasTaken = param().isAborting() && param().late == Reply::success;
    if (param().point.opened && !abortWasTaken)
        EXPECT_THAT(fix_.log.lines(), ElementsAre(abortRefused));
    else
        EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

TEST_P(JobOfAnEndedSession, WritesNothingForTheNextUser)
{
    const auto abortsBefore = aborts();
    fix_.model().signOut();
    fix_.run();
    fix_.linkAs(belasSession());
    const ModelState expected = state();
    EXPECT_EQ(expected.session, belasSession());
    EXPECT_EQ(expected.step, Step::consent);
    expectNoEffectOfALateReply(expected);
    expectOneJob();
    EXPECT_EQ(aborts(), abortsBefore);
    EXPECT_EQ(fix_.tokens->load(), belasSession());
    fix_.answer(ModelFixture::quest, testing::questJSON()); // requested by the next user's own prefetch
    EXPECT_NE(state().nimbrel, std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(, JobOfAnEndedSession, ::testing::ValuesIn(cases()), nameOf);

/// Another process has linked another user, and keeps the session in the same place.
class JobBesideAnotherUser : public SuspensionPoints {
protected:
    JobBesideAnotherUser() { fix_.tokens->save(belasSession()); }

    /// Whether the late reply refuses Ada's session for good: a 401 to the refresh, or to the retry after it.
    bool endsTheSession() const
    {
        const bool afterRefresh = param().point.name == "ScanWaitsForTheRetriedQuest";
        return param().late == Reply::notAuthorized && (param().isRefreshing() || afterRefresh);
    }
};

TEST_P(JobBesideAnotherUser, LeavesHerAlone)
{
    const ModelState before = state();
    suspended_.answer(param().late);
    EXPECT_EQ(fix_.tokens->load(), belasSession());
    EXPECT_THAT(suspended_.sentSince(), Each(Not(HasSubstr("bela"))));
    if (endsTheSession()) {
        EXPECT_EQ(state(), before.afterSessionEnd());
    } else {
        EXPECT_EQ(state().session, adasSession());
        EXPECT_EQ(state().generation, before.generation);
    }
}

TEST_P(JobBesideAnotherUser, TellsWhoWaitsForIt)
{
    if (param().late == Reply::success || endsTheSession()) return; // the test above
    ModelState expected = state();
    suspended_.answer(param().late);
    const phase::Failed stopped{"You signed in again, so this step was stopped."};
    if (param().point.flow == Flow::scan) expected.scanPhase = stopped;
    if (param().point.flow == Flow::upload) expected.uploadPhase = stopped;
    if (param().point.awaited == ModelFixture::puts)
        expected.uploadPhase = phase::Failed{"Part 1 of the upload failed (401)."};
    if (param().isAborting()) expected.uploadPhase = phase::Failed{"Part 1 of the upload failed (500)."};
    EXPECT_EQ(state(), expected);
    EXPECT_THAT(suspended_.sentSince(), IsEmpty());
    EXPECT_EQ(fix_.context.runningTasks(), 0U);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    if (param().point.opened)
        EXPECT_THAT(fix_.log.lines(), ElementsAre(abortRefused));
    else
        EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, JobBesideAnotherUser, ::testing::ValuesIn(casesWithSession()), nameOf);

/// Leaving `consent`, `find` and `upload` stops nothing.
class JobOfAStepThatWasLeft : public SuspensionPoints {};

TEST_P(JobOfAStepThatWasLeft, GoesOn)
{
    fix_.model().go(Step::access);
    suspended_.answer(Reply::success);
    if (fix_.isWaiting(ModelFixture::quest)) fix_.answer(ModelFixture::quest, testing::questJSON());
    fix_.runAll();
    if (fix_.isWaiting(ModelFixture::creates)) fix_.answer(ModelFixture::creates, testing::openedJSON());
    fix_.runAll();
    if (const auto part = fix_.http->waiting(ModelFixture::puts)) fix_.http->acknowledge(*part, "\"tag\"");
    fix_.run();
    if (fix_.isWaiting(ModelFixture::completes))
        fix_.answer(ModelFixture::completes, testing::submissionJSON("analyzing"));

    EXPECT_NE(state().nimbrel, std::nullopt);
    if (param().point.flow == Flow::scan) EXPECT_EQ(state().scanPhase, ScanPhase(phase::Found{}));
    if (param().point.flow == Flow::upload && !param().isAborting()) EXPECT_EQ(state().step, Step::done);
    EXPECT_THAT(fix_.leftovers(), IsEmpty());
    EXPECT_THAT(fix_.log.lines(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, JobOfAStepThatWasLeft, ::testing::ValuesIn(casesThatOutliveTheirStep()), nameOf);

} // namespace
} // namespace vorn
