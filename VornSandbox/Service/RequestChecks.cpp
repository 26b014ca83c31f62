#include "VornSandbox/Service/RequestChecks.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::array<std::string_view, 8> expected{"accept",     "accept-encoding", "accept-language", "authorization",
                                                   "connection", "content-length",  "content-type",    "host"};

struct TooDeep {};

bool is(const std::string* value, std::string_view text)
{
    return value != nullptr && *value == text;
}

ServiceError foreign(const char* message)
{
    return {403, "foreign_page", message};
}

ServiceError malformed(const std::string& message)
{
    return {400, "malformed_request", message};
}

/// Browsers leave out the default port of http.
bool namesThisService(std::string_view host, int port)
{
    const std::string suffix = ":" + std::to_string(port);
    if (host.ends_with(suffix)) {
        host.remove_suffix(suffix.size());
    } else if (port != 80) {
        return false;
    }
    return host == "127.0.0.1" || host == "localhost";
}

json parsed(const std::string& text)
{
    auto body = parseJSON(text);
    if (!body) throw malformed(fmt::format("The body is not JSON, or nested deeper than {}.", deepestJSON));
    return *std::move(body);
}

} // namespace

void guardRequest(const Call& call)
{
    const std::string* host = call.header("host");
    if (host == nullptr || !namesThisService(*host, call.servicePort)) {
        throw foreign("The service answers to 127.0.0.1 and localhost, with its port, and no other name.");
    }
    const std::string* site = call.header("sec-fetch-site");
    if (is(site, "cross-site") || is(site, "same-site")) throw foreign("The service answers no other page.");
    const std::string* origin = call.header("origin");
    if (call.path.starts_with("/api/") || call.path.starts_with("/uploads/")) {
        if (origin != nullptr) throw foreign("No page may call the API.");
        return;
    }
    if (origin != nullptr && *origin != "http://" + *host) throw foreign("The phone obeys its own page only.");
    // Browsers send a preflight request before JSON to another site, and this service never allows it.
    if (call.method != "GET" && !is(call.header("content-type"), "application/json")) {
        throw foreign("The phone takes JSON only.");
    }
}

void checkFrame(const Call& call, Frame frame)
{
    if (frame == Frame::own) return;
    if (frame == Frame::tokenless) refuseToken(call);
    if (!is(call.header("accept"), "application/json")) {
        throw ServiceError(406, "bad_accept", "The request does not accept application/json.");
    }
    const std::string* type = call.header("content-type");
    if (frame == Frame::bodiless) {
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

std::optional<json> parseJSON(std::string_view text)
{
    const auto watch = [](int depth, json::parse_event_t event, json&) {
        const bool opens = event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
        if (opens && depth >= deepestJSON) throw TooDeep(); // returning false would only leave this part out
        return true;
    };
    try {
        json document = json::parse(text, watch, false);
        return document.is_discarded() ? std::nullopt : std::optional(std::move(document));
    } catch (const TooDeep&) {
        return std::nullopt;
    }
}

RequestBody::RequestBody(const Call& call, Keys keys, std::size_t limit)
    : RequestBody(parsed(call.bodyText(limit)), keys)
{
}

RequestBody::RequestBody(json object, Keys keys) : json_(std::move(object))
{
    if (!json_.is_object()) throw malformed("The body is not a JSON object where one is expected.");
    for (const auto& [key, value] : json_.items()) {
        if (std::ranges::find(keys, key) == keys.end()) throw malformed("Unknown key " + key + ".");
        if (value.is_null()) throw malformed(key + " is null: leave it out instead.");
    }
}

const json& RequestBody::value(const char* key) const
{
    const auto found = json_.find(key);
    if (found == json_.end()) throw malformed(std::string(key) + " is missing.");
    return *found;
}

std::string RequestBody::text(const char* key) const
{
    if (!value(key).is_string()) throw malformed(std::string(key) + " is not a string.");
    return value(key).get<std::string>();
}

std::optional<std::string> RequestBody::optionalText(const char* key) const
{
    return json_.contains(key) ? std::optional(text(key)) : std::nullopt;
}

std::int64_t RequestBody::integer(const char* key) const
{
    const json& number = value(key);
    const bool fits = number.is_number_integer() &&
                      (!number.is_number_unsigned() ||
                       number.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<std::int64_t>::max()});
    if (!fits) throw malformed(std::string(key) + " is not a 64-bit integer.");
    return number.get<std::int64_t>();
}

std::vector<RequestBody> RequestBody::objects(const char* key, Keys keys) const
{
    if (!value(key).is_array()) throw malformed(std::string(key) + " is not an array.");
    std::vector<RequestBody> objects;
    for (const json& element : value(key)) objects.push_back(RequestBody(element, keys));
    return objects;
}

std::optional<RequestBody> RequestBody::optionalObject(const char* key, Keys keys) const
{
    return json_.contains(key) ? std::optional(RequestBody(value(key), keys)) : std::nullopt;
}

} // namespace vorn::sandbox
