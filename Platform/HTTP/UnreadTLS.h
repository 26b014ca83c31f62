#pragma once

#include <optional>
#include <string>

#include <curl/curl.h>

namespace vorn {

/// What the server has said inside of TLS and libcurl has not read, on the connection that `handle` uses now and that
/// is cut. libcurl can do nothing with the connection afterwards but close it, and would not notice. `socket` leads
/// there too, and stays open until then. Nothing, and the connection as it was, where libcurl's TLS is not ours to
/// call.
std::optional<std::string> takeUnreadTLS(CURL* handle, int socket);

} // namespace vorn
