#pragma once

#include "VornMac/Defaults/LayeredDefaults.h"

#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// The program's arguments. "-Key value" pairs are defaults for this run, which Qt never sees; what else there may be
/// are its own options, which it takes out.
class CommandLine {
public:
    CommandLine(int argc, char** argv);
    CommandLine(CommandLine&&) = delete; ///< Qt keeps pointing to what is here

    const LayeredDefaults::Line& defaults() const noexcept { return defaults_; }

    /// What to print instead of running, for "--help" and "--version".
    std::optional<std::string> answer() const;
    /// The first argument that nobody has taken. Ask once there is an application.
    std::optional<std::string> unknown() const;

    /// For the application object, which this outlives.
    int& count() noexcept { return count_; }
    char** values() noexcept { return values_.data(); }

private:
    LayeredDefaults::Line defaults_;
    std::vector<std::string> arguments_;
    std::vector<char*> values_;
    int count_ = 0;
};

} // namespace vorn
