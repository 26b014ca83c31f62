#pragma once

#include <memory>
#include <optional>
#include <string>

namespace vorn {

/// The proxies that the user's system is set to. Replaceable in tests.
class SystemProxy {
public:
    virtual ~SystemProxy() = default;

    /// The proxy for requests to `origin`, such as "https://host:8443/": "http://host:port" or "socks5h://host:port";
    /// empty for none, absent where it cannot be told. Takes as long as a script from the network takes, but 10 seconds
    /// at most. Never throws. Threads: any, several at once.
    virtual std::optional<std::string> proxyFor(const std::string& origin) = 0;

    /// Null where a system has proxies in the environment alone.
    static std::shared_ptr<SystemProxy> ofSystem();
};

} // namespace vorn
