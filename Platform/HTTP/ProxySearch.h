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

/// As `CURLOPT_PROXY` takes it: empty for none, absent for what the environment says. Nothing leads to this machine.
/// What the environment names counts for more than `system`, which may be null: who set it meant this program.
Async<std::optional<std::string>> proxyFor(std::shared_ptr<SystemProxy> system, URL url);

/// Whether the environment names a proxy for URLs of `scheme`, by the variables that libcurl reads.
bool isInEnvironment(std::string_view scheme);

/// `url` without user info, and with "/" in place of path and query: what a proxy's script may know.
std::string originOf(const URL& url);

} // namespace vorn::proxysearch
