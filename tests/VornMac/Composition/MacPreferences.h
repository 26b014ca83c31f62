#pragma once

#include "tests/support/apple/doubles/CFDoubles.h"

#include <map>
#include <string>

namespace vorn::testing {

/// A simulated Mac's preferences. As on a Mac, another process sees a write once both have synchronized, and a failed
/// write is tried again at the next synchronization.
struct MacPreferences {
    struct Value {
        CFDouble::Type type = CFDouble::Type::string;
        std::string bytes = {}; ///< as in a `CFDouble`

        bool operator==(const Value&) const = default;
    };
    using Domain = std::map<std::string, Value>;
    using Domains = std::map<std::string, Domain>; ///< by their names

    Domains kept;           ///< for every process, and for `defaults`
    bool canWrite = true;   ///< whether this process may change them
    Domains read = {};      ///< `kept`, as this process has read it
    Domains unwritten = {}; ///< what this process has set since
};

MacPreferences& macPreferences();

} // namespace vorn::testing
