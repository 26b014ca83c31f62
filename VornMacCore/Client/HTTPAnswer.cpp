#include "VornMacCore/Client/HTTPAnswer.h"

#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"

#include <utility>

namespace vorn {

Async<HTTPResponse> httpAnswer(std::shared_ptr<HTTPSession> session, HTTPRequest request)
{
    try {
        co_return co_await session->send(std::move(request));
    } catch (const URLError& error) {
        if (error.code() != URLError::Code::badServerResponse &&
            error.code() != URLError::Code::dataLengthExceedsMaximum)
            throw;
        throw APIError(APIError::InvalidResponse{});
    }
}

} // namespace vorn
