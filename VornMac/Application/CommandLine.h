#pragma once

#include "VornMac/Composition/ArgumentDefaults.h"
#include "VornMac/Composition/LayeredDefaults.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vorn {

/// The program's arguments. Qt never sees the "-Key value" pairs, which are defaults for this run, and removes its own
/// options from the rest.
class CommandLine {
public:
    /// The program's purpose, for its help and its manual.
    static constexpr const char* purpose =
        "Shares your Nimbrel chat from this computer. Without arguments, opens the window.";

    CommandLine(int argc, char** argv);
    CommandLine(CommandLine&&) = delete; ///< Qt keeps pointers into this object

    const LayeredDefaults::Line& defaults() const noexcept { return defaults_.values(); }

    /// Returns what to print instead of running, for "--help" and "--version".
    std::optional<std::string> answer() const;
    /// Returns the first argument that neither this program nor Qt understands.
    std::optional<std::string> unknown() const;
    /// Returns the mistake on the line, as one line for the user; absent when there is none.
    std::optional<std::string> mistake() const;

    /// The arguments for the application object, which must not outlive this object.
    int& count() noexcept { return count_; }
    char** values() noexcept { return values_.data(); }

private:
    std::span<const std::string> words() const { return std::span(arguments_).subspan(arguments_.empty() ? 0 : 1); }

    ArgumentDefaults defaults_;
    std::vector<std::string> arguments_; ///< the program's name, and all words that are not defaults
    std::vector<char*> values_;          ///< pointers into `arguments_`; Qt removes its own options
    int count_ = 0;
};

} // namespace vorn
