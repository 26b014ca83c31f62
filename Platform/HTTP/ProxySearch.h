#pragma once

#include "Platform/Async/Async.h"
#include "Platform/HTTP/SystemProxy.h"
#include "Platform/HTTP/URL.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// Which proxy leads to a URL. Threads: any.
namespace vorn::proxysearch {

/// The proxy for `url`, as `CURLOPT_PROXY` takes it: empty for none, and for this machine; absent for the
/// environment's. The environment, set for this program, takes precedence over `system`, which may be null.
Async<std::optional<std::string>> proxyFor(std::shared_ptr<SystemProxy> system, URL url);

/// Whether the environment names a proxy for URLs of `scheme`, by the variables that libcurl reads.
bool isInEnvironment(std::string_view scheme);

/// `url` without user info, and with "/" in place of path and query: all that a proxy script may know.
std::string originOf(const URL& url);

} // namespace vorn::proxysearch
