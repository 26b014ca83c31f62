#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Timing.h"

#include <utility>

namespace vorn {

void AppModel::watchSubmission(const std::string& id)
{
    submissionTask_ = {};
    if (session_) begin(submissionTask_, runReviewWatch(pinnedTo(*session_), id, sessionGeneration_));
}

Async<> AppModel::runReviewWatch(VornAPI api, std::string id, std::int64_t generation)
{
    co_await watch(std::move(api), std::move(id), generation);
    if (generation == sessionGeneration_) emit reviewWatchEnded(); // else it is the session that has ended
}

Async<> AppModel::watch(VornAPI api, std::string id, std::int64_t generation)
{
    const auto began = services_.clock->now();
    const auto pause = [&] {
        return timing::nextReviewPoll(submission_.value_or(SubmissionStatus{}), services_.clock->now() - began);
    };
    for (auto wait = pause(); wait; wait = pause()) {
        co_await services_.clock->sleep(*wait);
        try {
            if (co_await pollSubmission(api, id)) co_return;
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            if (handleSessionError(error, generation)) co_return;
            log_.error(std::string("submission poll failed: ") + error.what());
        }
    }
}

// Gives whether there is nothing more to watch.
Async<bool> AppModel::pollSubmission(VornAPI api, std::string id)
{
    const SubmissionStatus latest = co_await api.submission(id);
    assign(submission_, {latest}, &AppModel::submissionChanged);
    if (!latest.isTerminal()) co_return false;
    const NimbrelState outcome = co_await api.nimbrelState(); // which says what the review means for the next upload
    assign(nimbrel_, {outcome}, &AppModel::nimbrelChanged);
    co_return true;
}

} // namespace vorn
