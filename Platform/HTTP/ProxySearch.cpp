#include "Platform/HTTP/ProxySearch.h"

#include "Platform/Async/DetachedThreads.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace vorn::proxysearch {
namespace {

bool isSet(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

} // namespace

Async<std::optional<std::string>> proxyFor(std::shared_ptr<SystemProxy> system, URL url)
{
    // Proxies are for other machines, but few users exclude their own in the settings.
    if (url.isThisMachine()) co_return std::string();
    if (!system || isInEnvironment(url.scheme())) co_return std::nullopt;
    static DetachedThreads threads; // a script may take long, and cancelling must not wait for it
    const auto search = [system, origin = originOf(url)] { return system->proxyFor(origin); };
    try {
        co_return co_await onBackgroundUnawaited(&threads, search);
    } catch (const std::system_error&) { // no thread could be started
        co_return std::nullopt;
    }
}

bool isInEnvironment(std::string_view scheme)
{
    // Web servers put a request's "Proxy" header into "HTTP_PROXY", which libcurl therefore ignores.
    const bool own = scheme == "http" ? isSet("http_proxy") : isSet("https_proxy") || isSet("HTTPS_PROXY");
    return own || isSet("all_proxy") || isSet("ALL_PROXY");
}

std::string originOf(const URL& url)
{
    const std::string& text = url.text();
    const auto start = text.find("://") + 3;
    const auto end = std::min(text.find_first_of("/?#", start), text.size());
    std::string authority = text.substr(start, end - start);
    authority.erase(0, authority.rfind('@') + 1);
    return url.scheme() + "://" + authority + "/";
}

} // namespace vorn::proxysearch
