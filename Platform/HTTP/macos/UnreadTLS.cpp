#include "Platform/HTTP/UnreadTLS.h"

namespace vorn {

std::optional<std::string> takeUnreadTLS(CURL* /*handle*/, int /*socket*/)
{
    return std::nullopt; // the system's libcurl brings a TLS of its own, which we cannot call
}

} // namespace vorn
