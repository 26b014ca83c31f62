#include "VornSandbox/Service/PhoneRoutes.h"

#include "VornSandbox/Service/BoundedJSON.h"
#include "VornSandbox/Service/PhoneArchives.h"
#include "VornSandbox/Service/PhoneEvents.h"
#include "VornSandbox/Service/PhonePage.h"
#include "VornSandbox/Service/ServiceError.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <memory>
#include <string>
#include <string_view>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::size_t largestBody = 4096;

/// What the page sends: an object of texts, and nothing else.
std::string field(const Call& call, const char* key)
{
    const auto body = parseJSON(call.bodyText(largestBody));
    if (!body || !body->is_object() || !body->contains(key) || !body->at(key).is_string()) {
        throw ServiceError(400, "malformed_request", std::string(key) + " is missing.");
    }
    return body->at(key).get<std::string>();
}

Answer done()
{
    return {.body = "{}"};
}

/// A file of the page. It may load nothing from elsewhere, and run nothing that an archive smuggled in.
Answer file(const char* type, std::string_view content)
{
    return {
        .contentType = type,
        .body = std::string(content),
        .headers = {{"Content-Security-Policy", "default-src 'none'; script-src 'self'; style-src 'self'; connect-src"
                                                " 'self'; img-src data:; base-uri 'none'; form-action 'none';"
                                                " frame-ancestors 'none'"},
                    {"X-Content-Type-Options", "nosniff"},
                    {"Cache-Control", "no-store"}}};
}

std::int64_t pageNumber(const std::string& text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < 0) {
        throw ServiceError(400, "malformed_request", "page is no number.");
    }
    return number;
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
    const auto add = [&](const char* method, const char* path, Router::Handler handler) {
        router.add("phone", method, path, std::move(handler));
    };
    const auto serve = [&](const char* path, const char* type, std::string_view content) {
        add("GET", path, [=](const Call&, const Router::Arguments&) { return file(type, content); });
    };
    const auto act = [&](const char* path, Answer (*function)(Backend&, const Call&, const Router::Arguments&)) {
        add("POST", path, [&backend, function](const Call& call, const Router::Arguments& ids) {
            return function(backend, call, ids);
        });
    };
    serve("/", "text/html; charset=utf-8", page::html);
    serve("/phone/phone.css", "text/css; charset=utf-8", page::style);
    serve("/phone/phone.js", "text/javascript; charset=utf-8", page::script);
    const auto board = std::make_shared<PhoneBoard>(backend);
    add("GET", "/phone/events",
        [&backend, board](const Call&, const Router::Arguments&) { return watchPhone(backend, board); });
    const auto archives = std::make_shared<PhoneArchives>(backend);
    add("GET", "/phone/submissions/*/messages", [archives](const Call& call, const Router::Arguments& ids) {
        const auto page = archives->page(ids[0], pageNumber(call.queryValue("page")));
        return Answer{.body = page.dump(-1, ' ', false, json::error_handler_t::replace)};
    });
    act("/phone/links/scan", scanCode);
    act("/phone/links/*/scan", scan);
    act("/phone/links/*/approve", approve);
    act("/phone/links/*/reject", reject);
    act("/phone/submissions/*/outcome", decide);
}

} // namespace vorn::sandbox
