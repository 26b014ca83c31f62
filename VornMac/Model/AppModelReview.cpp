#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Timing.h"

#include <utility>

namespace vorn {

void AppModel::watchSubmission(const std::string& id)
{
    jobs_.review.cancel();
    if (session_) jobs_.review = running(runReviewWatch(pinnedTo(*session_), id));
}

Async<> AppModel::runReviewWatch(VornAPI api, std::string id)
{
    if (co_await watch(std::move(api), std::move(id))) emit reviewWatchEnded();
}

Async<bool> AppModel::watch(VornAPI api, std::string id)
{
    const auto began = services_.clock->now();
    const auto pause = [&] {
        return timing::nextReviewPoll(submission_.value_or(SubmissionStatus{}), services_.clock->now() - began);
    };
    for (auto wait = pause(); wait; wait = pause()) {
        co_await services_.clock->sleep(*wait);
        try {
            if (co_await pollSubmission(api, id)) co_return true;
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            if (handleSessionError(error)) co_return session_.has_value();
            log_.error(std::string("submission poll failed: ") + error.what());
        }
    }
    co_return true;
}

// Returns whether there is nothing more to watch.
Async<bool> AppModel::pollSubmission(VornAPI api, std::string id)
{
    const SubmissionStatus latest = co_await api.submission(id);
    assign(submission_, {latest}, &AppModel::submissionChanged);
    if (!latest.status.isFinal()) co_return false;
    const NimbrelState nimbrel = co_await api.nimbrelState(); // tells what the review means for the next upload
    assign(nimbrel_, {nimbrel}, &AppModel::nimbrelChanged);
    co_return true;
}

} // namespace vorn
