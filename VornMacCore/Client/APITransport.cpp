#include "VornMacCore/Client/APITransport.h"

#include "VornMacCore/Client/HTTPAnswer.h"
#include "VornMacCore/Wire/Application.h"

#include <chrono>
#include <utility>

namespace vorn {

using namespace std::chrono_literals;

namespace {

/// Removes the token from a refusal that repeats it: a refusal's text is shown and logged.
Async<HTTPResponse> withoutToken(Async<HTTPResponse> answer, std::string token)
{
    HTTPResponse response = co_await std::move(answer);
    if (token.empty() || isSuccess(response.status)) co_return response;
    for (auto at = response.body.find(token); at != std::string::npos; at = response.body.find(token, at))
        response.body.erase(at, token.size());
    co_return response;
}

} // namespace

APITransport::APITransport(APIConfiguration configuration, std::shared_ptr<HTTPSession> session,
                           BackgroundExecutor* background)
    : configuration_(std::move(configuration)), session_(std::move(session)), background_(background),
      log_(bundleIdentifier(), "api")
{
}

Async<HTTPResponse> APITransport::send(APICall call, const std::optional<std::string>& bearerToken) const
{
    return withoutToken(httpAnswer(session_, framed(std::move(call), bearerToken)), bearerToken.value_or(""));
}

HTTPRequest APITransport::framed(APICall call, const std::optional<std::string>& bearerToken) const
{
    HTTPRequest request{
        .method = call.method,
        .url = configuration_.apiRoot().appendingPathComponent(call.path),
        .headers = {{"Accept", "application/json"}},
        .body = nullptr,
        .inactivityLimit = 30s,
        .onBodyProgress = nullptr,
    };
    if (call.body) {
        request.body = std::make_shared<const BytesBody>(bytesOf(*call.body));
        request.headers.emplace_back("Content-Type", "application/json");
    }
    if (bearerToken) request.headers.emplace_back("Authorization", "Bearer " + *bearerToken);
    return request;
}

} // namespace vorn
