#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// User defaults that the command line overrides for one run, as programs on macOS understand them: "-Key value"
/// anywhere on the line. A value; threads: any.
class ArgumentDefaults {
public:
    ArgumentDefaults() = default;

    /// Removes every pair from `arguments` whose key starts with one "-" and a capital letter; the rest keeps its
    /// order. The last of several values for a key counts. After "--" nothing is an override, and a key at the end has
    /// no value. Options of these programs are in lower case, so they are never taken for keys.
    static ArgumentDefaults takenFrom(std::vector<std::string>& arguments);

    /// Whether `argument` has the form of a key: "-Key".
    static bool isKey(const std::string& argument);

    /// The value of `key`; nothing if the line does not override it.
    std::optional<std::string> text(const std::string& key) const;

    const std::map<std::string, std::string>& values() const noexcept { return values_; }

    bool operator==(const ArgumentDefaults&) const = default;

private:
    std::map<std::string, std::string> values_;
};

} // namespace vorn
