#pragma once

#include "VornSandbox/Service/Call.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a request must look like. Threads: any. Errors: `ServiceError`.
namespace vorn::sandbox {

/// Refuses with 403 what a page of another web site could make a browser send: a Host that is not this service's (DNS
/// rebinding can point another name at 127.0.0.1), any request from another page, an Origin on the API, and changes in
/// a form that browsers send to other sites without a preflight request.
void guardRequest(const Call& call);

/// Checks what `frame` requires: "Accept", "Content-Type", whether there is a body, and that `tokenless` requests carry
/// no token.
void checkFrame(const Call& call, Frame frame);

/// The token of "Authorization: Bearer TOKEN"; 401 when there is none.
std::string bearerToken(const Call& call);

/// Refuses a token where none is required: whoever reads that request would learn it.
void refuseToken(const Call& call);

/// Names of headers that the client has no reason to send.
std::vector<std::string> unexpectedHeaders(const Call& call);

/// Reads untrusted JSON; nothing if `text` is not JSON or is nested deeper than `deepestJSON`. Genuine requests need
/// four levels. The library copies and prints values by recursion: a few hundred thousand brackets, which it reads
/// without complaint, would overflow the stack later.
std::optional<nlohmann::json> parseJSON(std::string_view text);
constexpr int deepestJSON = 64;

/// A request's JSON object, read strictly: types are exact, optional keys are left out instead of null, and unknown
/// keys are refused. Errors: 400, naming the key.
class RequestBody {
public:
    using Keys = std::initializer_list<std::string_view>;
    static constexpr std::size_t usualLimit = std::size_t{64} * 1024;

    /// Reads the body of `call`; 413 once it is larger than `limit` bytes.
    RequestBody(const Call& call, Keys keys, std::size_t limit = usualLimit);

    std::string text(const char* key) const;
    std::optional<std::string> optionalText(const char* key) const;
    std::int64_t integer(const char* key) const;
    /// The objects of an array, in each of which only `keys` are allowed.
    std::vector<RequestBody> objects(const char* key, Keys keys) const;
    std::optional<RequestBody> optionalObject(const char* key, Keys keys) const;

private:
    RequestBody(nlohmann::json object, Keys keys);
    const nlohmann::json& value(const char* key) const;

    nlohmann::json json_;
};

} // namespace vorn::sandbox
