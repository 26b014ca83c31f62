#include "VornSandbox/Service/APIChecks.h"

#include "VornSandbox/Service/ServiceError.h"

#include <algorithm>
#include <array>

namespace vorn::sandbox {
namespace {

constexpr std::array<std::string_view, 8> expected{"accept",     "accept-encoding", "accept-language", "authorization",
                                                   "connection", "content-length",  "content-type",    "host"};

bool is(const std::string* value, std::string_view text)
{
    return value != nullptr && *value == text;
}

} // namespace

void checkFrame(const Call& call, BodyRule rule)
{
    if (!is(call.header("accept"), "application/json")) {
        throw ServiceError(406, "bad_accept", "The request does not accept application/json.");
    }
    const std::string* type = call.header("content-type");
    if (rule == BodyRule::none) {
        if (call.hasBody()) throw ServiceError(400, "unexpected_body", "The request has a body, but takes none.");
        if (type != nullptr) throw ServiceError(400, "unexpected_content_type", "There is a Content-Type but no body.");
        return;
    }
    if (!call.hasBody()) throw ServiceError(400, "missing_body", "The request has no body.");
    if (!is(type, "application/json")) {
        throw ServiceError(415, "bad_content_type", "The body's Content-Type is not application/json.");
    }
}

std::string bearerToken(const Call& call)
{
    constexpr std::string_view prefix = "Bearer ";
    const std::string* value = call.header("authorization");
    if (value == nullptr || !value->starts_with(prefix)) {
        throw ServiceError(401, "missing_token", "The request carries no bearer token.");
    }
    return value->substr(prefix.size());
}

void refuseToken(const Call& call)
{
    if (call.header("authorization") != nullptr) {
        throw ServiceError(400, "unexpected_authorization", "The request carries a token where none is asked for.");
    }
}

std::vector<std::string> unexpectedHeaders(const Call& call)
{
    std::vector<std::string> names;
    for (const auto& [name, value] : call.headers) {
        if (std::ranges::find(expected, name) == expected.end()) names.push_back(name);
    }
    return names;
}

} // namespace vorn::sandbox
