#pragma once

#include "Platform/HTTP/HTTPSession.h"

#include <memory>

namespace vorn {

/// Sends `request` to the service, or to the storage that the service named, and returns the answer, whatever its
/// status. Throws `APIError::InvalidResponse` for an answer that is not HTTP or is too large, otherwise `URLError`.
Async<HTTPResponse> httpAnswer(std::shared_ptr<HTTPSession> session, HTTPRequest request);

inline bool isSuccess(int status) noexcept
{
    return status >= 200 && status <= 299;
}

} // namespace vorn
