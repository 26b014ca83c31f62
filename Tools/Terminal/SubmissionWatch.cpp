#include "Tools/Terminal/SubmissionWatch.h"

#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Log.h"
#include "VornMacCore/Application/Application.h"
#include "VornMacCore/Client/APIError.h"

#include <exception>
#include <string>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

bool endsSession(const std::exception& error)
{
    const auto* api = dynamic_cast<const APIError*>(&error);
    return api != nullptr && (api->is<APIError::NotSignedIn>() || api->is<APIError::SessionExpired>() ||
                              api->is<APIError::SessionChanged>());
}

} // namespace

std::optional<std::chrono::seconds> nextPollDelay(const SubmissionStatus& last, Clock::Duration watchedFor)
{
    if (last.isTerminal() || watchedFor >= 1200s) return std::nullopt;
    return last.status == "review_pending" ? 30s : 5s;
}

Async<SubmissionStatus> watchSubmission(VornAPI api, Clock* clock, SubmissionStatus last,
                                        std::function<void(const SubmissionStatus&)> onChange)
{
    const auto begin = clock->now();
    while (const auto pause = nextPollDelay(last, clock->now() - begin)) {
        co_await clock->sleep(*pause);
        try {
            const SubmissionStatus latest = co_await api.submission(last.id);
            if (std::exchange(last, latest) != latest) onChange(last);
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            if (endsSession(error)) throw;
            Log(bundleIdentifier(), "app").error(std::string("submission poll failed: ") + error.what());
        }
    }
    co_return last;
}

} // namespace vorn
