#include "Platform/HTTP/HTTPSession.h"

#include "Platform/HTTP/ProxySearch.h"
#include "Platform/HTTP/TransferEngine.h"
#include "Platform/HTTP/URLError.h"

#include <algorithm>

namespace vorn {
namespace {

/// A line break would end the header and begin another.
bool isOneLine(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

void check(const HTTPRequest& request)
{
    const std::string& scheme = request.url.scheme();
    if (scheme != "http" && scheme != "https") throw URLError(URLError::Code::unsupportedURL);
    for (const auto& [name, value] : request.headers) {
        if (name.empty() || !isOneLine(name) || !isOneLine(value)) throw URLError(URLError::Code::unknown);
    }
}

Async<HTTPResponse> sendOn(std::shared_ptr<TransferEngine> engine, std::shared_ptr<SystemProxy> proxies,
                           HTTPRequest request)
{
    check(request);
    const auto proxy = co_await proxysearch::proxyFor(std::move(proxies), request.url);
    co_return co_await suspend<HTTPResponse>([&](Resume<HTTPResponse> resume) -> CancelAction {
        auto transfer = std::make_shared<Transfer>(std::move(request), proxy, std::move(resume));
        engine->add(transfer);
        return [transfer, weak = std::weak_ptr(engine)] {
            transfer->abandon();
            if (const auto alive = weak.lock()) alive->wake();
        };
    });
}

class KeptAliveSession final : public HTTPSession {
public:
    explicit KeptAliveSession(const Options& options)
        : proxies_(options.proxies), engine_(TransferEngine::start(options))
    {
    }
    ~KeptAliveSession() override { engine_->stop(); }
    KeptAliveSession(KeptAliveSession&&) = delete;

    Async<HTTPResponse> send(HTTPRequest request) override { return sendOn(engine_, proxies_, std::move(request)); }

private:
    std::shared_ptr<SystemProxy> proxies_;
    std::shared_ptr<TransferEngine> engine_;
};

} // namespace

std::optional<std::string> HTTPResponse::header(std::string_view name) const
{
    const std::string* const value = findHeader(headers, name);
    return value ? std::optional(*value) : std::nullopt;
}

std::shared_ptr<HTTPSession> HTTPSession::make(Options options)
{
    if (!options.now) options.now = &std::chrono::steady_clock::now;
    return std::make_shared<KeptAliveSession>(options);
}

} // namespace vorn
