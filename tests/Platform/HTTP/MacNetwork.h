#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// A Mac's network settings in this test program, and the run loop on which its scripts run. Threads: one.
struct MacNetwork {
    struct Proxy {
        std::string type; ///< as its constant is called
        std::string host = {};
        std::optional<int> port = {};
        std::string script = {}; ///< where a type has one: its address, or itself
    };

    bool hasSettings = true;
    std::vector<Proxy> proxies;
    std::optional<std::vector<Proxy>> foundByScript; ///< nothing: the script fails

    std::vector<std::string> asked; ///< the addresses, and what runs for which

    static MacNetwork& current();
};

} // namespace vorn::testing
