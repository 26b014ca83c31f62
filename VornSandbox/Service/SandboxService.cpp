#include "VornSandbox/Service/SandboxService.h"

#include "VornSandbox/Service/RequestChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorn::sandbox {

SandboxService::SandboxService(const ServiceOptions& options, Clock clock, RequestLog::Write log)
    : settings_(options.settings), log_(std::move(log)), faults_(options.faults), folder_(options.state),
      state_(folder_, std::move(clock)), accounts_(state_, settings_),
      submissions_(state_, settings_, accounts_, folder_.uploads()), phone_(state_, accounts_, submissions_),
      routes_(allRoutes()), front_(options.port, [this](Call& call) { return serve(call); }, log_)
{
}

std::vector<Route> SandboxService::allRoutes()
{
    std::vector<Route> routes = accounts_.routes();
    std::ranges::move(submissions_.routes(), std::back_inserter(routes));
    std::ranges::move(phone_.routes(), std::back_inserter(routes));
    return routes;
}

Answer SandboxService::serve(Call& call)
{
    guardRequest(call); // first: a refused request must not count towards a fault
    const Route& route = match(routes_, call);
    if (route.operation != "phone") {
        for (const std::string& name : unexpectedHeaders(call)) {
            log_.warning(fmt::format("{} {} has the header {}", call.method, call.path, name));
        }
    }
    const auto fault = faults_.next(route.operation);
    if (fault) {
        if (auto answer = answerInstead(*fault)) return *std::move(answer);
    }
    checkFrame(call, route.frame);
    Answer answer = route.handler(call);
    if (fault) spoil(answer, *fault);
    return answer;
}

} // namespace vorn::sandbox
