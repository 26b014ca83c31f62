#pragma once

#include <memory>
#include <optional>
#include <string>

namespace vorn {

/// The proxies in the system's settings. Replaceable in tests.
class SystemProxy {
public:
    virtual ~SystemProxy() = default;

    /// The proxy for requests to `origin`, such as "https://host:8443/": "http://host:port" or "socks5h://host:port";
    /// empty for none, absent if unknown. May wait for a proxy script from the network, 10 seconds at most for each.
    /// Never throws. Threads: any, several at once.
    virtual std::optional<std::string> proxyFor(const std::string& origin) = 0;

    /// Null where proxies are set only in the environment.
    static std::shared_ptr<SystemProxy> ofSystem();
};

} // namespace vorn
