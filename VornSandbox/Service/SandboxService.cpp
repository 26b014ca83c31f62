#include "VornSandbox/Service/SandboxService.h"

#include "VornSandbox/Service/APIChecks.h"
#include "VornSandbox/Service/APIRoutes.h"
#include "VornSandbox/Service/Archive/ArchiveInspection.h"
#include "VornSandbox/Service/Phone/PhoneRoutes.h"
#include "VornSandbox/Service/UploadRoutes.h"

#include <fmt/format.h>

#include <chrono>
#include <optional>
#include <thread>

namespace vorn::sandbox {
namespace {

constexpr auto slowBy = std::chrono::seconds(3);

/// What a fault answers in place of the service; nothing when the service answers after all.
std::optional<Answer> faultyAnswer(const Fault& fault)
{
    switch (fault.effect) {
    case Fault::Effect::status:
        return Answer{
            .status = fault.status,
            .body = fmt::format(R"({{"message":"The sandbox was told to answer {}.","code":"fault"}})", fault.status)};
    case Fault::Effect::drop: return Answer{.instead = Answer::Instead::drop};
    case Fault::Effect::hang: return Answer{.instead = Answer::Instead::hang};
    case Fault::Effect::garbage: return Answer{.body = "{\"status\": \xff<html>"};
    case Fault::Effect::slow: std::this_thread::sleep_for(slowBy); return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

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
    const Router::Match match = router_.match(call.method, call.path);
    if (!call.path.starts_with("/phone") && call.path != "/") warnAbout(call);
    if (const auto fault = faults_.next(match.operation)) {
        if (auto answer = faultyAnswer(*fault)) return *std::move(answer);
    }
    return match.handler(call, match.arguments);
}

void SandboxService::warnAbout(const Call& call)
{
    for (const std::string& name : unexpectedHeaders(call)) {
        log_.warning(fmt::format("{} {} has the header {}", call.method, call.path, name));
    }
}

} // namespace vorn::sandbox
