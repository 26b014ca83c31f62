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

    /// Takes every pair out of `arguments` whose key starts with one "-" and a capital letter; what is left keeps its
    /// order. The last of several values for one key counts. After "--" nothing is an override, nor is a key at the
    /// end, which has no value. Options of programs here are spelt in lower case, so that the two never meet.
    static ArgumentDefaults takenFrom(std::vector<std::string>& arguments);

    /// Whether `argument` is written as a key: "-Key".
    static bool isKey(const std::string& argument);

    /// The value of `key`; nothing when the line does not override it.
    std::optional<std::string> text(const std::string& key) const;

    const std::map<std::string, std::string>& values() const noexcept { return values_; }

    bool operator==(const ArgumentDefaults&) const = default;

private:
    std::map<std::string, std::string> values_;
};

} // namespace vorn
