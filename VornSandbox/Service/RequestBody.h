#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// A request's JSON object, read strictly: types are exact, optional keys are left out instead of null, and keys that
/// nobody knows are refused. Errors: `ServiceError` 400 that names the key.
class RequestBody {
public:
    RequestBody(std::string_view text, std::initializer_list<std::string_view> keys);

    std::string text(const char* key) const;
    std::optional<std::string> optionalText(const char* key) const;
    std::int64_t integer(const char* key) const;
    /// The objects of an array, each with exactly `keys` allowed.
    std::vector<RequestBody> objects(const char* key, std::initializer_list<std::string_view> keys) const;
    std::optional<RequestBody> optionalObject(const char* key, std::initializer_list<std::string_view> keys) const;

private:
    struct Parsed {
        nlohmann::json json;
    };
    RequestBody(Parsed parsed, std::initializer_list<std::string_view> keys);
    const nlohmann::json& value(const char* key) const;

    nlohmann::json json_;
};

} // namespace vorn::sandbox
