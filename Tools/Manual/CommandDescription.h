#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vorn {

/// One option or argument of a program.
struct OptionDescription {
    /// How a value is completed.
    enum class Value { none, text, file, folder, oneOf };

    std::vector<std::string> names; ///< as typed: "-h", "--help"
    std::string help;
    std::string valueName{};    ///< empty for a flag
    std::string defaultValue{}; ///< empty if the help states none
    Value value = Value::none;
    bool repeats = false;
    bool isPositional = false;

    /// The values to choose from, for `Value::oneOf`.
    std::vector<std::string> words() const;
};

/// A program's help in parts, for its manual and its completions.
struct CommandDescription {
    std::string name;
    std::string text;
    std::string footer{};
    std::vector<OptionDescription> options{};
    std::vector<CommandDescription> commands{};
};

/// How a value is completed that the help calls `valueName`.
OptionDescription::Value valueCalled(const std::string& valueName);

CommandDescription describe(const CLI::App& app);

} // namespace vorn
