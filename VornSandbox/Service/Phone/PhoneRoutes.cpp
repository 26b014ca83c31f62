#include "VornSandbox/Service/Phone/PhoneRoutes.h"

#include "VornSandbox/Service/Phone/PhoneGuard.h"
#include "VornSandbox/Service/State/ServiceError.h"

#include <nlohmann/json.hpp>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::size_t largestBody = 4096;

/// What the page sends: an object of texts, and nothing else.
std::string field(const Call& call, const char* key)
{
    const json body = json::parse(call.bodyText(largestBody), nullptr, false);
    if (!body.is_object() || !body.contains(key) || !body[key].is_string()) {
        throw ServiceError(400, "malformed_request", std::string(key) + " is missing.");
    }
    return body[key].get<std::string>();
}

Answer done()
{
    return {.body = "{}"};
}

// POST /phone/links/scan {"qrPayload"}
Answer scanCode(Backend& backend, const Call& call, const Router::Arguments&)
{
    const std::string payload = field(call, "qrPayload");
    const auto lock = backend.state.lock();
    return {.body = json{{"linkId", backend.links.scanCode(payload)}}.dump()};
}

// POST /phone/links/<id>/scan
Answer scan(Backend& backend, const Call&, const Router::Arguments& ids)
{
    const auto lock = backend.state.lock();
    backend.links.scan(ids[0]);
    return done();
}

// POST /phone/links/<id>/approve {"userId"}
Answer approve(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    const std::string user = field(call, "userId");
    const auto lock = backend.state.lock();
    backend.links.approve(ids[0], user);
    return done();
}

// POST /phone/links/<id>/reject
Answer reject(Backend& backend, const Call&, const Router::Arguments& ids)
{
    const auto lock = backend.state.lock();
    backend.links.reject(ids[0]);
    return done();
}

// POST /phone/submissions/<id>/outcome {"outcome": "approved", "rejected:REASON" or "expired"}
Answer decide(Backend& backend, const Call& call, const Router::Arguments& ids)
{
    const auto plan = ReviewPlan::parse(field(call, "outcome"));
    if (!plan || plan->kind != ReviewPlan::Kind::fixed) {
        throw ServiceError(422, "bad_outcome", "That is not how a review can end.");
    }
    backend.submissions.decide(ids[0], plan->outcome);
    return done();
}

} // namespace

void addPhoneRoutes(Router& router, Backend& backend)
{
    const auto add = [&](const char* method, const char* path,
                         Answer (*function)(Backend&, const Call&, const Router::Arguments&)) {
        router.add("phone", method, path, [&backend, function](const Call& call, const Router::Arguments& ids) {
            guardPhone(call);
            return function(backend, call, ids);
        });
    };
    add("POST", "/phone/links/scan", scanCode);
    add("POST", "/phone/links/*/scan", scan);
    add("POST", "/phone/links/*/approve", approve);
    add("POST", "/phone/links/*/reject", reject);
    add("POST", "/phone/submissions/*/outcome", decide);
}

} // namespace vorn::sandbox
