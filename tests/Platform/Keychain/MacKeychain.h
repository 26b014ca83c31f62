#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <Security/Security.h>

namespace vorn::testing {

/// The keychain behind the functions of the Security framework in this test program. Threads: one.
struct MacKeychain {
    using Pairs = std::map<std::string, std::string>;

    struct Call {
        std::string function;
        Pairs query; ///< constants by their names
        bool operator==(const Call&) const = default;
    };

    std::map<std::pair<std::string, std::string>, std::string> secrets; ///< by service and account
    std::map<std::string, OSStatus> failures;                           ///< the functions that fail, and how
    std::optional<CFTypeRef> found;                                     ///< replaces what is found

    std::vector<Call> calls;
};

/// The keychain of this program; changes to it take effect at once.
MacKeychain& macKeychain();

} // namespace vorn::testing
