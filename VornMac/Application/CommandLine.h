#pragma once

#include "VornMac/Defaults/ArgumentDefaults.h"
#include "VornMac/Defaults/LayeredDefaults.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vorn {

/// The program's arguments. "-Key value" pairs are defaults for this run, which Qt never sees; what else there may be
/// are its own options, which it takes out.
class CommandLine {
public:
    CommandLine(int argc, char** argv);
    CommandLine(CommandLine&&) = delete; ///< Qt keeps pointing to what is here

    const LayeredDefaults::Line& defaults() const noexcept { return defaults_.values(); }

    /// What to print instead of running, for "--help" and "--version".
    std::optional<std::string> answer() const;
    /// The first argument that nobody takes, neither this program nor Qt.
    std::optional<std::string> unknown() const;
    /// What is wrong with the line, as one line for the user; nothing when all is well.
    std::optional<std::string> mistake() const;

    /// For the application object, which this outlives.
    int& count() noexcept { return count_; }
    char** values() noexcept { return values_.data(); }

private:
    std::span<const std::string> words() const { return std::span(arguments_).subspan(arguments_.empty() ? 0 : 1); }

    ArgumentDefaults defaults_;
    std::vector<std::string> arguments_; ///< the program's name, and what is no default
    std::vector<char*> values_;          ///< into them; Qt takes out what is its own
    int count_ = 0;
};

} // namespace vorn
