#include "tests/VornMac/Model/SuspensionPoints.h"

#include "tests/support/service/ServiceAnswers.h"

#include <gtest/gtest.h>

namespace vorn::testing {
namespace {

using namespace std::chrono_literals;
using Flow = SuspensionPoint::Flow;
using Fixture = ModelFixture;

// Linking.

void waitForACode(Fixture& fix)
{
    fix.launch();
}
void sleepBeforeAPoll(Fixture& fix)
{
    waitForACode(fix);
    fix.answer(Fixture::links, linkJSON());
}
void waitForAPoll(Fixture& fix)
{
    sleepBeforeAPoll(fix);
    fix.advance(2s);
}
void sleepAfterADecline(Fixture& fix)
{
    waitForAPoll(fix);
    fix.answer(Fixture::polls, pollJSON("rejected"));
}
void sleepAfterAFailure(Fixture& fix)
{
    waitForACode(fix);
    fix.fail(Fixture::links, URLError::Code::timedOut);
}
void sleepBeforeTheSecondCode(Fixture& fix)
{
    waitForACode(fix);
    fix.answer(Fixture::links, linkJSON(1000, "2026-03-01T08:00:00Z")); // which has expired
}

// Before the chat is found.

void waitForThePrefetch(Fixture& fix)
{
    fix.launchSignedIn(false);
}
void sleepBetweenProbes(Fixture& fix)
{
    fix.setAccess(FullDiskAccessStatus::denied);
    fix.launchSignedIn();
}
void waitForTheQuest(Fixture& fix)
{
    fix.launchSignedIn();
}
void readMessages(Fixture& fix)
{
    waitForTheQuest(fix);
    fix.answer(Fixture::quest, questJSON());
}
void waitForARefresh(Fixture& fix)
{
    waitForTheQuest(fix);
    fix.refuse(Fixture::quest, 401);
}
void waitForTheRetriedQuest(Fixture& fix)
{
    waitForARefresh(fix);
    fix.answer(Fixture::refreshes, tokenPairJSON(adasSession(2)));
}

// Uploading.

void packArchive(Fixture& fix)
{
    fix.launchFound();
    fix.model().upload();
    fix.run();
}
void hashArchive(Fixture& fix)
{
    packArchive(fix);
    fix.background.run();
    fix.run();
}
void createSubmission(Fixture& fix)
{
    hashArchive(fix);
    fix.background.run();
    fix.run();
}
void openArchive(Fixture& fix)
{
    createSubmission(fix);
    fix.answer(Fixture::creates, openedJSON());
}
void sendPart(Fixture& fix)
{
    fix.launchUploading();
}
void askForPartURLs(Fixture& fix)
{
    sendPart(fix);
    fix.refuse(Fixture::puts, 403);
}
void completeUpload(Fixture& fix)
{
    sendPart(fix);
    fix.http->acknowledge(fix.http->waiting(Fixture::puts).value(), "\"tag-1\"");
    fix.run();
}
void abortUpload(Fixture& fix)
{
    sendPart(fix);
    fix.refuse(Fixture::puts, 500);
}

// The review.

void sleepFiveSeconds(Fixture& fix)
{
    fix.launchDone();
}
void waitForTheStatus(Fixture& fix)
{
    sleepFiveSeconds(fix);
    fix.advance(5s);
}
void sleepThirtySeconds(Fixture& fix)
{
    waitForTheStatus(fix);
    fix.answer(Fixture::review, submissionJSON("review_pending"));
}
void waitForTheOutcome(Fixture& fix)
{
    waitForTheStatus(fix);
    fix.answer(Fixture::review, submissionJSON("approved"));
}

} // namespace

const std::vector<SuspensionPoint>& suspensionPoints()
{
    static const std::vector<SuspensionPoint> points{
        {"LinkWaitsForACode", Flow::link, waitForACode, Fixture::links, linkJSON()},
        {"LinkSleepsBeforeAPoll", Flow::link, sleepBeforeAPoll},
        {"LinkWaitsForAPoll", Flow::link, waitForAPoll, Fixture::polls, approvalJSON(adasSession())},
        {"LinkSleepsAfterADecline", Flow::link, sleepAfterADecline},
        {"LinkSleepsAfterAFailure", Flow::link, sleepAfterAFailure},
        {"LinkSleepsBeforeTheSecondCode", Flow::link, sleepBeforeTheSecondCode},
        {"PrefetchWaitsForTheQuest", Flow::prefetch, waitForThePrefetch, Fixture::quest, questJSON()},
        {"AccessSleepsBetweenProbes", Flow::access, sleepBetweenProbes},
        {"ScanWaitsForTheQuest", Flow::scan, waitForTheQuest, Fixture::quest, questJSON()},
        {"ScanReadsMessages", Flow::scan, readMessages},
        {"ScanWaitsForARefresh", Flow::scan, waitForARefresh, Fixture::refreshes, tokenPairJSON(adasSession(2))},
        {"ScanWaitsForTheRetriedQuest", Flow::scan, waitForTheRetriedQuest, Fixture::quest, questJSON()},
        {"UploadPacksTheArchive", Flow::upload, packArchive},
        {"UploadHashesTheArchive", Flow::upload, hashArchive},
        {"UploadCreatesTheSubmission", Flow::upload, createSubmission, Fixture::creates, openedJSON()},
        {"UploadOpensTheArchive", Flow::upload, openArchive, "", "", true},
        {"UploadSendsAPart", Flow::upload, sendPart, Fixture::puts, "", true},
        {"UploadAsksForPartURLs", Flow::upload, askForPartURLs, Fixture::partURLs, partURLsJSON(), true},
        {"UploadCompletesTheSubmission", Flow::upload, completeUpload, Fixture::completes, submissionJSON("analyzing"),
         true},
        {"UploadAbortsTheSubmission", Flow::upload, abortUpload, Fixture::aborts, "{}", true},
        {"ReviewSleepsFiveSeconds", Flow::review, sleepFiveSeconds},
        {"ReviewWaitsForTheStatus", Flow::review, waitForTheStatus, Fixture::review, submissionJSON("approved")},
        {"ReviewSleepsThirtySeconds", Flow::review, sleepThirtySeconds},
        {"ReviewWaitsForTheQuest", Flow::review, waitForTheOutcome, Fixture::quest, questJSON("approved")},
    };
    return points;
}

void PrintTo(const SuspensionPoint& point, std::ostream* out)
{
    *out << point.name;
}

std::vector<UserAction> cancelsOf(Flow flow)
{
    const auto going = [](const std::string& name, Step step) {
        return UserAction{name, [step](AppModel& model) { model.go(step); }};
    };
    switch (flow) {
    case Flow::link: return {going("Left", Step::access), {"BegunAnew", [](AppModel& model) { model.startLinking(); }}};
    case Flow::prefetch: return {going("BegunAnew", Step::consent)};
    case Flow::access: return {going("Left", Step::find), going("BegunAnew", Step::access)};
    case Flow::scan: return {going("BegunAnew", Step::find)};
    case Flow::upload: return {going("ReplacedByAScan", Step::find)};
    case Flow::review:
        return {going("Left", Step::find),
                {"BegunAnew", [](AppModel& model) { model.watchSubmission(model.submission()->id); }}};
    }
    return {};
}

SuspendedModel::SuspendedModel(SuspensionPoint point) : point_(std::move(point))
{
    point_.reach(fix);
    fix.run();
    if (!point_.awaited.empty()) {
        request_ = fix.http->waiting(point_.awaited);
        EXPECT_TRUE(request_) << point_.awaited << " does not wait";
    }
    sent_ = fix.http->count();
}

void SuspendedModel::answerOnly(int status, const std::string& body)
{
    if (!request_) return;
    if (point_.awaited == Fixture::puts && status == 200)
        fix.http->acknowledge(*request_, "\"tag-1\"");
    else
        fix.http->answer(*request_, status, body);
    fix.run();
}

void SuspendedModel::answer(int status, const std::string& body)
{
    answerOnly(status, body);
    letTimePass();
}

void SuspendedModel::answer(Reply reply)
{
    if (reply == Reply::success)
        answer(200, point_.success);
    else
        answer(401, "");
}

void SuspendedModel::fail(URLError::Code code)
{
    fix.http->fail(request_.value(), code);
    fix.runAll();
}

void SuspendedModel::letTimePass()
{
    fix.runAll();
    fix.advance(1h);
    fix.runAll();
}

std::vector<std::string> SuspendedModel::sentSince() const
{
    auto sent = fix.http->summaries();
    sent.erase(sent.begin(), sent.begin() + static_cast<std::ptrdiff_t>(sent_));
    return sent;
}

} // namespace vorn::testing
