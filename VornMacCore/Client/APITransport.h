#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/Base/Log.h"
#include "Platform/HTTP/HTTPSession.h"
#include "VornMacCore/Client/APIConfiguration.h"

#include <memory>
#include <optional>
#include <string>

namespace vorn {

/// One call of the service's API, before it is framed.
struct APICall {
    HTTPRequest::Method method = HTTPRequest::Method::get;
    std::string path;                ///< relative to the API's root, not yet percent-encoded
    std::optional<std::string> body; ///< JSON
};

/// Adds to a call what every request to the service has, and sends it. Nothing is sent twice. Threads: any. Errors:
/// `URLError` from the transfer; `APIError::InvalidResponse` for an answer that is not HTTP, or too large.
class APITransport {
public:
    /// Long work runs on `background`, which must outlive every call; if null, where the call runs.
    APITransport(APIConfiguration configuration, std::shared_ptr<HTTPSession> session,
                 BackgroundExecutor* background = nullptr);

    /// Removes the token from a refusal (a status other than 2xx) that repeats it.
    Async<HTTPResponse> send(APICall call, const std::optional<std::string>& bearerToken) const;

    const Log& log() const noexcept { return log_; }
    BackgroundExecutor* background() const noexcept { return background_; }

private:
    HTTPRequest framed(APICall call, const std::optional<std::string>& bearerToken) const;

    APIConfiguration configuration_;
    std::shared_ptr<HTTPSession> session_;
    BackgroundExecutor* background_;
    Log log_;
};

} // namespace vorn
