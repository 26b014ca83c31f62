#include "Tools/Terminal/LinkFlow.h"

#include "Platform/Base/CancelFlag.h"
#include "Tools/Terminal/CommandFailure.h"
#include "Tools/Terminal/Describe.h"

#include <algorithm>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

constexpr Clock::Duration shortestInterval = 1s; ///< between two polls, and between two requests for a code
constexpr auto lifetimeOfUndated = 120s;         ///< of a code that does not say when it expires
constexpr auto grace = 5s;                       ///< for an answer that the phone gave in the last moment
constexpr auto declinedIsShown = 3s;
constexpr auto failureIsShown = 5s;

constexpr const char* declined = "Your phone declined the link.";
constexpr const char* ignored = "Nobody confirmed the link in time. Link this Mac first: vorn-terminal link";

Clock::Duration pollInterval(const DeviceLink& link)
{
    constexpr std::int64_t longest = 24LL * 3600 * 1000; // a larger number must not overflow
    return std::max<Clock::Duration>(std::chrono::milliseconds(std::min(link.pollIntervalMs, longest)),
                                     shortestInterval);
}

} // namespace

LinkFlow::LinkFlow(VornAPI api, Clock& clock, CreateDeviceLinkRequest request, Show show, Patience patience)
    : api_(std::move(api)), clock_(&clock), request_(std::move(request)), show_(std::move(show)), patience_(patience)
{
}

Async<DesktopSession> LinkFlow::run()
{
    while (true) {
        std::string failure;
        try {
            if (auto session = co_await tryOneCode()) co_return *std::move(session);
            continue;
        } catch (const Cancelled&) {
            throw;
        } catch (const CommandFailure&) {
            throw;
        } catch (const std::exception& error) {
            if (patience_ == Patience::oneCode) throw;
            failure = describe(error); // nothing can be awaited in here
        }
        show({LinkPhase::Failed{std::move(failure)}});
        co_await clock_->sleep(failureIsShown);
    }
}

Async<std::optional<DesktopSession>> LinkFlow::tryOneCode()
{
    show({LinkPhase::Loading{}});
    DeviceLink link = co_await askForCode();
    show({LinkPhase::Showing{link.qrPayload, link.expiresAtDate()}});
    Outcome outcome = co_await poll(std::move(link));
    if (auto* session = std::get_if<DesktopSession>(&outcome)) co_return std::move(*session);
    co_await renew(std::holds_alternative<Declined>(outcome));
    co_return std::nullopt;
}

Async<> LinkFlow::renew(bool wasDeclined)
{
    if (patience_ == Patience::oneCode)
        throw CommandFailure(TerminalStatus::notLinked, wasDeclined ? declined : ignored);
    if (!wasDeclined) co_return;
    show({LinkPhase::Rejected{}});
    co_await clock_->sleep(declinedIsShown);
}

Async<DeviceLink> LinkFlow::askForCode()
{
    // A service whose codes arrive expired must not be asked without end.
    if (lastAsked_) co_await clock_->sleep(*lastAsked_ + shortestInterval - clock_->now());
    lastAsked_ = clock_->now();
    co_return co_await api_.createDeviceLink(request_);
}

Async<LinkFlow::Outcome> LinkFlow::poll(DeviceLink link)
{
    const Instant deadline = link.expiresAtDate().value_or(clock_->date() + lifetimeOfUndated) + grace;
    while (clock_->date() < deadline) {
        co_await clock_->sleep(pollInterval(link));
        DeviceLinkPoll answer = co_await api_.pollDeviceLink(link.linkId, link.pollSecret);
        switch (answer.status) {
        case DeviceLinkStatus::pending: break;
        case DeviceLinkStatus::scanned: show({LinkPhase::Scanned{}}); break;
        case DeviceLinkStatus::rejected: co_return Declined{};
        case DeviceLinkStatus::expired: co_return Expired{};
        case DeviceLinkStatus::approved:
            if (!answer.session) co_return Expired{};
            co_return *std::move(answer.session);
        }
    }
    co_return Expired{};
}

void LinkFlow::show(LinkPhase phase)
{
    if (shown_ == phase) return; // each phase is told once, however often the service repeats it
    shown_ = std::move(phase);
    show_(*shown_);
}

} // namespace vorn
