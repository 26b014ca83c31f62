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
    std::string path;                ///< below the API's root; its parts are joined as they are
    std::optional<std::string> body; ///< JSON
};

/// Frames a call like every request to the service, and sends it. Nothing is sent twice. Threads: any. Errors:
/// `URLError` from the transfer; `APIError::InvalidResponse` for an answer that is not HTTP, or too large.
class APITransport {
public:
    /// What takes long is done on `background`, which outlives every call; null: where the call runs.
    APITransport(APIConfiguration configuration, std::shared_ptr<HTTPSession> session,
                 BackgroundExecutor* background = nullptr);

    /// A refusal (a status other than 2xx) comes without the token, should it repeat it.
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
