#pragma once

#include "Platform/HTTP/URLError.h"

#include <curl/curl.h>

namespace vorn {

/// The code for a failure of libcurl. `systemError` is the `errno` of the last call on the socket, or 0; `onNetwork`
/// whether the machine is on any network.
URLError::Code failureOf(CURLcode result, int systemError, bool onNetwork) noexcept;

} // namespace vorn
