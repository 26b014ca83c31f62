#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// A Mac's network settings in this test program, and the run loop on which its scripts run. Threads: one.
struct MacNetwork {
    struct Proxy {
        std::string type; ///< the name of its constant
        std::string host = {};
        std::optional<int> port = {};
        std::string script = {}; ///< its address or its text, for types that have one
    };

    bool hasSettings = true;
    std::vector<Proxy> proxies;
    std::optional<std::vector<Proxy>> foundByScript; ///< nothing: the script fails

    std::vector<std::string> asked; ///< addresses, and scripts with the URL they ran for

    static MacNetwork& current();
};

} // namespace vorn::testing
