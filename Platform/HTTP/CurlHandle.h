#pragma once

#include "Platform/Base/Owned.h"
#include "Platform/HTTP/HTTPSession.h"
#include "Platform/HTTP/URLError.h"

#include <cstdint>
#include <optional>
#include <string>

#include <curl/curl.h>

namespace vorn {

using CurlHandle = Owned<CURL, curl_easy_cleanup>;
using CurlList = Owned<curl_slist, curl_slist_free_all>;

/// Sets an option of `handle`. Throws `URLError` if this libcurl does not support it.
template <class Value>
void set(CURL* handle, CURLoption option, Value value)
{
    if (curl_easy_setopt(handle, option, value) != CURLE_OK) throw URLError(URLError::Code::unknown);
}

/// The header lines of a request. libcurl does not copy them.
struct CurlHeaders {
    CurlList request;
    CurlList proxy; ///< for the proxy alone
};

/// Configures `handle` for `request`. `proxy` is empty for none, absent for the environment's. Trusts the system's
/// authorities or, if not empty, `authorities` (PEM). The returned header lines must outlive the handle. Throws
/// `URLError`.
CurlHeaders configure(CURL* handle, const HTTPRequest& request, const std::optional<std::string>& proxy,
                      const std::string& authorities);

/// The body's size in bytes; 0 without one.
std::int64_t bodySizeOf(const HTTPRequest& request) noexcept;

} // namespace vorn
