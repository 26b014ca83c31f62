#pragma once

#include "VornSandbox/Service/Accounts.h"
#include "VornSandbox/Service/Faults.h"
#include "VornSandbox/Service/HTTPFront.h"
#include "VornSandbox/Service/Phone.h"
#include "VornSandbox/Service/ServiceOptions.h"
#include "VornSandbox/Service/State.h"
#include "VornSandbox/Service/Submissions.h"

#include <string>
#include <vector>

namespace vorn::sandbox {

/// The whole service, running as long as the object lives: API, part uploads and the page that plays the phone.
class SandboxService {
public:
    /// Throws `std::runtime_error`, with a message for users, when the port is taken or the state cannot be kept.
    SandboxService(const ServiceOptions& options, Clock clock, RequestLog::Write log);

    std::string baseURL() const { return front_.baseURL(); }

private:
    std::vector<Route> allRoutes();
    Answer serve(Call& call);

    const Settings settings_;
    RequestLog log_;
    FaultPlan faults_;
    StateFolder folder_;
    State state_;
    Accounts accounts_;
    Submissions submissions_;
    Phone phone_;
    std::vector<Route> routes_;
    HTTPFront front_; ///< last: it answers requests as soon as it is constructed
};

} // namespace vorn::sandbox
