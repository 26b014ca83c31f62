#pragma once

#include "Platform/Async/Clock.h"
#include "Tools/Terminal/LinkPhase.h"
#include "VornMacCore/Client/VornAPI.h"

#include <functional>
#include <optional>
#include <variant>

namespace vorn {

/// Links this Mac to an account: asks the service for a code, polls until the phone has answered, and goes on to the
/// next code until one is approved.
/// Threads: the one on which `run` runs. Errors: `run` throws `Cancelled`, and `CommandFailure` when `show` does.
class LinkFlow {
public:
    /// How long to try.
    enum class Patience {
        untilLinked, ///< somebody is there: every failure is shown and tried again
        oneCode, ///< nobody may be there: `run` throws the first failure, and `CommandFailure` when the code is over
    };

    /// Told of each phase as it begins.
    using Show = std::function<void(const LinkPhase&)>;

    /// `clock` must outlive the flow.
    LinkFlow(VornAPI api, Clock& clock, CreateDeviceLinkRequest request, Show show,
             Patience patience = Patience::untilLinked);

    /// Gives the session of the link that was approved; nothing is stored yet. The flow must outlive it.
    Async<DesktopSession> run();

private:
    struct Expired {};
    struct Declined {};
    using Outcome = std::variant<Expired, Declined, DesktopSession>;

    Async<std::optional<DesktopSession>> tryOneCode();
    Async<> renew(bool wasDeclined);
    Async<DeviceLink> askForCode();
    Async<Outcome> poll(DeviceLink link);
    void show(LinkPhase phase);

    VornAPI api_;
    Clock* clock_;
    CreateDeviceLinkRequest request_;
    Show show_;
    Patience patience_;
    std::optional<LinkPhase> shown_;
    std::optional<Clock::Duration> lastAsked_;
};

} // namespace vorn
