#pragma once

#include "Platform/Async/SingleFlight.h"
#include "VornMacCore/Client/StoredSession.h"

namespace vorn {

/// Lets any number of rejected requests share one token refresh. Threads: any.
/// No caller owns the refresh: a cancelled caller stops waiting, and the refresh goes on for the others.
class RefreshCoordinator {
public:
    using Work = SingleFlight<StoredSession>::Work;

    /// Waits for the refresh under way, or begins `work`; every caller gets its session or its error.
    Async<StoredSession> run(Work work) { return inFlight_.run(std::move(work)); }

private:
    SingleFlight<StoredSession> inFlight_;
};

} // namespace vorn
