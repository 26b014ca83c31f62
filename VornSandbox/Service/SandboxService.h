#pragma once

#include "VornSandbox/Service/Backend.h"
#include "VornSandbox/Service/FaultPlan.h"
#include "VornSandbox/Service/HTTPFront.h"
#include "VornSandbox/Service/Router.h"
#include "VornSandbox/Service/ServiceOptions.h"

#include <string>

namespace vorn::sandbox {

/// The whole service, running as long as the object lives: API, part uploads and the page that plays the phone.
class SandboxService {
public:
    /// Throws `std::runtime_error`, with a sentence for people, when the port is taken or the state cannot be kept.
    SandboxService(const ServiceOptions& options, Clock clock, RequestLog::Write log);

    std::string baseURL() const { return front_.baseURL(); }

private:
    Answer serve(const Call& call);
    void warnAbout(const Call& call);

    RequestLog log_;
    FaultPlan faults_;
    Backend backend_;
    Router router_;
    HTTPFront front_; ///< last: it answers as soon as it is there
};

} // namespace vorn::sandbox
