#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Decisions.h"
#include "VornMac/Model/Timing.h"
#include "VornMacCore/Wire/DeviceIdentity.h"

#include <utility>
#include <variant>

namespace vorn {

/// How an attempt with one code ended.
struct AppModel::LinkOutcome {
    struct Expired {};
    struct Rejected {};
    std::variant<Expired, Rejected, DesktopSession> how;
};

void AppModel::startLinking()
{
    stopLinking();
    lastCodeRequest_.reset();
    linkTask_ = running(runLinkLoop());
}

void AppModel::stopLinking()
{
    linkTask_.cancel();
    endCode(phase::Loading{});
}

void AppModel::endCode(LinkPhase next)
{
    const auto whole = transition();
    assign(qrPayload_, {}, &AppModel::qrPayloadChanged); // nothing polls for it any more
    assign(linkExpiresAt_, {}, &AppModel::linkExpiresAtChanged);
    assign(linkPhase_, std::move(next), &AppModel::linkPhaseChanged);
}

// Ends only when the user has signed in or the job is cancelled: a failed or declined attempt is shown for a while,
// then another follows.
Async<> AppModel::runLinkLoop()
{
    while (true) {
        std::optional<Clock::Duration> pause;
        try {
            const LinkOutcome outcome = co_await linkOnce();
            if (const auto* session = std::get_if<DesktopSession>(&outcome.how)) {
                signedIn(*session); // cancels this job, which is at its end
                co_return;
            }
            if (std::holds_alternative<LinkOutcome::Rejected>(outcome.how)) {
                endCode(phase::Rejected{});
                pause = timing::declinedIsShown;
            }
        } catch (const Cancelled&) {
            throw;
        } catch (const std::exception& error) {
            endCode(errorText(error));
            pause = timing::linkFailureIsShown;
        }
        if (pause) co_await services_.clock->sleep(*pause);
    }
}

Async<AppModel::LinkOutcome> AppModel::linkOnce()
{
    endCode(phase::Loading{});
    if (lastCodeRequest_)
        co_await services_.clock->sleep(*lastCodeRequest_ + timing::codeInterval - services_.clock->now());
    lastCodeRequest_ = services_.clock->now();
    DeviceLink link = co_await services_.api.createDeviceLink(DeviceIdentity::linkRequest(services_.bundle));
    showCode(link);
    co_return co_await poll(std::move(link));
}

void AppModel::showCode(const DeviceLink& link)
{
    const auto whole = transition();
    assign(qrPayload_, {link.qrPayload}, &AppModel::qrPayloadChanged);
    assign(linkExpiresAt_, link.expiresAtDate(), &AppModel::linkExpiresAtChanged);
    assign(linkPhase_, {phase::Showing{}}, &AppModel::linkPhaseChanged);
}

Async<AppModel::LinkOutcome> AppModel::poll(DeviceLink link)
{
    const Instant deadline = timing::pollDeadline(link, services_.clock->date());
    while (services_.clock->date() < deadline) {
        co_await services_.clock->sleep(timing::pollInterval(link));
        DeviceLinkPoll answer = co_await services_.api.pollDeviceLink(link.linkId, link.pollSecret);
        switch (decide::codeTurn(answer)) {
        case decide::CodeTurn::keepPolling: break;
        case decide::CodeTurn::showScanned: assign(linkPhase_, {phase::Scanned{}}, &AppModel::linkPhaseChanged); break;
        case decide::CodeTurn::declined: co_return {LinkOutcome::Rejected{}};
        case decide::CodeTurn::expired: co_return {LinkOutcome::Expired{}};
        case decide::CodeTurn::signIn: co_return {std::move(answer.session).value_or(DesktopSession{})};
        }
    }
    co_return {LinkOutcome::Expired{}};
}

void AppModel::signedIn(const DesktopSession& linked)
{
    const auto whole = transition();
    ++sessionGeneration_;
    dropUser(); // the user who was signed in when the code was requested
    const StoredSession session(linked);
    try {
        services_.api.adopt(session);
    } catch (const std::exception& error) {
        // The session still serves this run; after the next start the user must link again.
        log_.error(std::string("keychain save failed: ") + error.what());
    }
    assign(session_, {session}, &AppModel::sessionChanged);
    go(decide::stepAfterSignIn(hasAcceptedConsent(), probeAccess()));
}

} // namespace vorn
