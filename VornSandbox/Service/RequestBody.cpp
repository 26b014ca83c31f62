#include "VornSandbox/Service/RequestBody.h"

#include "VornSandbox/Service/BoundedJSON.h"
#include "VornSandbox/Service/ServiceError.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace vorn::sandbox {
namespace {

ServiceError malformed(const std::string& message)
{
    return {400, "malformed_request", message};
}

nlohmann::json parsed(std::string_view text)
{
    auto json = parseJSON(text);
    if (!json) throw malformed(fmt::format("The body is no JSON, or nested deeper than {}.", deepestJSON));
    return *std::move(json);
}

std::string textOf(const nlohmann::json& value, const char* key)
{
    if (!value.is_string()) throw malformed(std::string(key) + " is not a string.");
    return value.get<std::string>();
}

} // namespace

RequestBody::RequestBody(std::string_view text, std::initializer_list<std::string_view> keys)
    : RequestBody(Parsed{parsed(text)}, keys)
{
}

RequestBody::RequestBody(Parsed parsed, std::initializer_list<std::string_view> keys) : json_(std::move(parsed.json))
{
    if (!json_.is_object()) throw malformed("The body is not a JSON object where one is expected.");
    for (const auto& [key, value] : json_.items()) {
        if (std::ranges::find(keys, key) == keys.end()) throw malformed("Nobody knows the key " + key + ".");
        if (value.is_null()) throw malformed(key + " is null: leave it out instead.");
    }
}

const nlohmann::json& RequestBody::value(const char* key) const
{
    const auto found = json_.find(key);
    if (found == json_.end()) throw malformed(std::string(key) + " is missing.");
    return *found;
}

std::string RequestBody::text(const char* key) const
{
    return textOf(value(key), key);
}

std::optional<std::string> RequestBody::optionalText(const char* key) const
{
    const auto found = json_.find(key);
    return found == json_.end() ? std::nullopt : std::optional(textOf(*found, key));
}

std::int64_t RequestBody::integer(const char* key) const
{
    const nlohmann::json& number = value(key);
    const bool fits = number.is_number_integer() &&
                      (!number.is_number_unsigned() ||
                       number.get<std::uint64_t>() <= std::uint64_t{std::numeric_limits<std::int64_t>::max()});
    if (!fits) throw malformed(std::string(key) + " is not an integer of 64 bits.");
    return number.get<std::int64_t>();
}

std::vector<RequestBody> RequestBody::objects(const char* key, std::initializer_list<std::string_view> keys) const
{
    const nlohmann::json& array = value(key);
    if (!array.is_array()) throw malformed(std::string(key) + " is not an array.");
    std::vector<RequestBody> objects;
    for (const nlohmann::json& element : array) objects.push_back(RequestBody(Parsed{element}, keys));
    return objects;
}

std::optional<RequestBody> RequestBody::optionalObject(const char* key,
                                                       std::initializer_list<std::string_view> keys) const
{
    const auto found = json_.find(key);
    return found == json_.end() ? std::nullopt : std::optional(RequestBody(Parsed{*found}, keys));
}

} // namespace vorn::sandbox
