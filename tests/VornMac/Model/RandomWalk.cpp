#include "tests/VornMac/Model/RandomWalk.h"

#include "VornMacCore/Wire/WireDate.h"

#include <array>
#include <variant>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace vorn::testing {

using namespace std::chrono_literals;
using Fixture = ModelFixture;

void RandomWalk::require(bool holds, const std::string& promise)
{
    if (!holds) broken_.push_back(promise);
}

std::string RandomWalk::user() const
{
    const auto& session = fix_.model().session();
    return session ? session->userId : "";
}

bool RandomWalk::isForeign(const std::optional<StoredSession>& stored) const
{
    return stored && !user().empty() && stored->userId != user();
}

void RandomWalk::observe(bool isAtRest)
{
    for (const auto& problem : watch_->problems()) require(false, problem);
    observeRequests();
    if (isAtRest) checkAtRest();
}

void RandomWalk::observeRequests()
{
    const auto generation = fix_.model().sessionGeneration();
    if (std::exchange(observedGeneration_, generation) != generation) lastCodeRequest_.reset();
    const auto now = fix_.clock.now();
    for (; observedRequests_ < fix_.http->count(); ++observedRequests_) {
        const auto line = service_.lineOf(observedRequests_);
        const auto owner = service_.userOf(observedRequests_);
        // A request that was cancelled at once is from a loop that was replaced.
        if (line == Fixture::links && !fix_.http->isCancelled(observedRequests_)) {
            require(!lastCodeRequest_ || now - *lastCodeRequest_ >= 1s, "a second between two requests for a code");
            lastCodeRequest_ = now;
        }
        const bool isReview = line.starts_with("GET") && line != Fixture::quest;
        if (isReview && !fix_.http->isCancelled(observedRequests_)) {
            const auto poll = fix_.http->summary(observedRequests_); // with the token, which differs in a repetition
            const auto last = lastReviewPoll_.find(poll);
            require(last == lastReviewPoll_.end() || now - last->second >= 5s, "five seconds between polls");
            lastReviewPoll_[poll] = now;
        }
        if (line.ends_with("/abort")) // is sent for an ended session too, if the user is still linked elsewhere
            require(line.find(owner == "user-bela" ? "/sub-bela-" : "/sub-ada-") != std::string::npos,
                    "an abort is of its owner");
        else if (line != Fixture::revokes && !owner.empty())
            require(owner == user() || fix_.http->isCancelled(observedRequests_),
                    "a request is the user's own: " + line);
    }
}

void RandomWalk::checkAtRest()
{
    checkJobs();
    checkLinking();
    checkOwnership();
    checkUpload();
    checkStore();
    checkLog();
}

// At most one job of each kind runs; linking, probing and watching a review only on their own step.
void RandomWalk::checkJobs()
{
    const Step step = fix_.model().step();
    std::size_t reviews = 0;
    const std::size_t uploads = service_.waiting(Fixture::creates) + service_.waiting(Fixture::puts) +
                                service_.waiting("/part-urls") + service_.waiting("/complete");
    for (const auto& summary : fix_.http->waiting())
        reviews += summary.starts_with("GET /api/v1/desktop/nimbrel/submissions/") ? 1 : 0;
    const std::size_t links = service_.waiting(Fixture::links) + service_.waiting(Fixture::polls);

    require(reviews <= (step == Step::done ? 1U : 0U), "one review is watched, and on the done step only");
    require(uploads <= 1, "one upload");
    require(service_.waiting(Fixture::quest) <= 3, "a prefetch, a scan and a review ask for the quest");
    require(links <= (step == Step::link ? 1U : 0U), "one attempt to link, and on the link step only");

    const std::size_t sleeps = fix_.clock.pendingSleeps();
    if (step == Step::link) require(sleeps + links == 1, "the link step links");
    if (step == Step::access)
        require(sleeps == 1 || sleeps == 2, "the access step probes, and shows that it is granted");
    if (step == Step::done) require(sleeps + reviews <= 1, "the done step watches at most");
    if (step == Step::consent || step == Step::find || step == Step::upload)
        require(sleeps == 0, "no other step waits");

    const bool mayClean = fix_.background.waiting() == 0 && uploads == 0 && service_.waiting("/abort") == 0 &&
                          service_.waiting(Fixture::refreshes) == 0;
    if (mayClean) require(fix_.leftovers().empty(), "no file is left without a job");
    const bool isLoading = std::holds_alternative<phase::Loading>(fix_.model().scanPhase());
    if (step == Step::find && isLoading)
        require(service_.waiting(Fixture::quest) + service_.waiting(Fixture::refreshes) + fix_.background.waiting() > 0,
                "somebody works on what is shown as loading");
}

void RandomWalk::checkLinking()
{
    const AppModel& model = fix_.model();
    const auto& phase = model.linkPhase();
    if (std::holds_alternative<phase::Failed>(phase)) require(!model.qrPayload(), "no code after a failure");
    if (std::holds_alternative<phase::Showing>(phase) || std::holds_alternative<phase::Scanned>(phase))
        require(model.qrPayload().has_value(), "a code is shown");
    else
        require(!model.qrPayload() && !model.linkExpiresAt(), "nothing of a code is shown without one");
    if (!model.session()) require(model.step() == Step::link, "who is not signed in links");
}

// Nothing that was found for one user is shown to another, or without a session.
void RandomWalk::checkOwnership()
{
    const AppModel& model = fix_.model();
    const auto name = user() == "user-bela" ? "bela" : "ada";
    const auto isOwn = [&](const char* property) {
        require(model.session().has_value(), std::string(property) + " without a session");
        require(watch_->generationOf(property) == model.sessionGeneration(), std::string(property) + " of the session");
    };
    if (model.nimbrel()) {
        isOwn("nimbrel");
        require(model.nimbrel().value().quest.id == fmt::format("quest-{}", name), "the quest is the user's");
    }
    if (model.submission()) {
        isOwn("submission");
        require(model.submission().value().id.starts_with(fmt::format("sub-{}-", name)),
                "the submission is the user's");
    }
    if (model.exportResult()) isOwn("exportResult");
    if (!std::holds_alternative<phase::Idle>(model.uploadPhase())) isOwn("uploadPhase");
    const auto& scan = model.scanPhase();
    if (!std::holds_alternative<phase::Idle>(scan) && !std::holds_alternative<phase::Loading>(scan)) isOwn("scanPhase");
}

bool RandomWalk::mayUpload() const
{
    const AppModel& model = fix_.model();
    if (!std::holds_alternative<phase::Found>(model.scanPhase()) || !model.nimbrel()) return false;
    const QuestWire& quest = model.nimbrel().value().quest;
    if (quest.status == "submitted") return false;
    if (quest.status != "approved") return true;
    const auto until = WireDate::parse(quest.availableAt);
    return !until || *until <= fix_.clock.date();
}

void RandomWalk::checkUpload()
{
    const AppModel& model = fix_.model();
    require(model.canUpload() == mayUpload(), "an upload is offered when it may be made");
    const auto* uploading = std::get_if<phase::Uploading>(&model.uploadPhase());
    if (uploading != nullptr) require(uploading->fraction >= 0 && uploading->fraction < 1, "a fraction of the whole");
}

// A session that another process stored for another user stays until this model's user links.
void RandomWalk::checkStore()
{
    if (!foreignSession_) return;
    const auto stored = fix_.tokens->load();
    if (stored != foreignSession_) require(stored && stored == fix_.model().session(), "another user stays signed in");
    if (!isForeign(stored)) foreignSession_.reset();
}

void RandomWalk::checkLog()
{
    constexpr std::array expected{
        "[app] nimbrel prefetch failed: ", "[app] submission poll failed: ", "[api] logout failed: ",
        "[upload] abort after a failed upload failed: ", "[api] undecodable "};
    for (const auto& line : fix_.log.lines())
        require(
            std::any_of(expected.begin(), expected.end(), [&](const char* start) { return line.starts_with(start); }),
            "no line but the expected ones: " + line);
}

} // namespace vorn::testing
