#include "VornSandbox/Service/SandboxService.h"

#include "VornSandbox/Service/APIChecks.h"
#include "VornSandbox/Service/APIRoutes.h"
#include "VornSandbox/Service/Archive.h"
#include "VornSandbox/Service/FaultAnswers.h"
#include "VornSandbox/Service/PhoneRoutes.h"
#include "VornSandbox/Service/RequestGuard.h"
#include "VornSandbox/Service/UploadRoutes.h"

#include <fmt/format.h>

#include <utility>

namespace vorn::sandbox {

SandboxService::SandboxService(const ServiceOptions& options, Clock clock, RequestLog::Write log)
    : log_(std::move(log)), faults_(options.faults),
      backend_(options.settings, options.state, std::move(clock), inspectArchive), router_([this] {
          Router router;
          addAccountRoutes(router, backend_);
          addSubmissionRoutes(router, backend_);
          addUploadRoutes(router, backend_);
          addPhoneRoutes(router, backend_);
          return router;
      }()),
      front_(options.port, [this](const Call& call) { return serve(call); }, log_)
{
}

Answer SandboxService::serve(const Call& call)
{
    guardRequest(call); // before anything counts it
    const Router::Match match = router_.match(call.method, call.path);
    if (!call.path.starts_with("/phone") && call.path != "/") warnAbout(call);
    const auto fault = faults_.next(match.operation);
    if (fault) {
        if (auto answer = answerInstead(*fault)) return *std::move(answer);
    }
    Answer answer = match.handler(call, match.arguments);
    if (fault) spoil(answer, *fault);
    return answer;
}

void SandboxService::warnAbout(const Call& call)
{
    for (const std::string& name : unexpectedHeaders(call)) {
        log_.warning(fmt::format("{} {} has the header {}", call.method, call.path, name));
    }
}

} // namespace vorn::sandbox
