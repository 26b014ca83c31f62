#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// Values from the command line that override user defaults for one run, written as for any macOS program: "-Key value"
/// anywhere on the line. A value; threads: any.
class ArgumentDefaults {
public:
    ArgumentDefaults() = default;

    /// Removes from `arguments` every pair whose key starts with one "-" and a capital letter; the rest keeps its
    /// order. If a key has several values, the last one counts. Nothing after "--" is an override, and a key at the end
    /// of the line has no value and stays in `arguments`. The programs' own options are in lower case, so they are
    /// never taken for keys.
    static ArgumentDefaults takenFrom(std::vector<std::string>& arguments);

    /// Whether `argument` has the form of a key: "-Key".
    static bool isKey(const std::string& argument);

    /// The value of `key`; absent if the line does not override it.
    std::optional<std::string> text(const std::string& key) const;

    const std::map<std::string, std::string>& values() const noexcept { return values_; }

    bool operator==(const ArgumentDefaults&) const = default;

private:
    std::map<std::string, std::string> values_;
};

} // namespace vorn
