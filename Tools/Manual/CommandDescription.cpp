#include "Tools/Manual/CommandDescription.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <CLI/CLI.hpp>

namespace vorn {
namespace {

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    if (option.get_positional()) return {option.get_name(true)};
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

OptionDescription describe(const CLI::Option& option)
{
    OptionDescription description{
        .names = namesOf(option), .help = option.get_description(), .isPositional = option.get_positional()};
    if (option.get_items_expected_max() == 0) return description;
    description.valueName = option.get_type_name();
    description.defaultValue = option.get_default_str();
    description.value = valueCalled(description.valueName);
    description.repeats = option.get_items_expected_max() > 1;
    return description;
}

} // namespace

std::vector<std::string> OptionDescription::words() const
{
    return CLI::detail::split(valueName, '|');
}

OptionDescription::Value valueCalled(const std::string& valueName)
{
    using Value = OptionDescription::Value;
    constexpr std::array<std::string_view, 3> files{"DB", "FILE", "OUT.zip"};
    if (valueName.find('|') != std::string::npos) return Value::oneOf;
    if (std::ranges::find(files, valueName) != files.end()) return Value::file;
    return valueName == "FOLDER" ? Value::folder : Value::text;
}

CommandDescription describe(const CLI::App& app)
{
    CommandDescription description{.name = app.get_name(), .text = app.get_description(), .footer = app.get_footer()};
    for (const CLI::Option* option : app.get_options()) description.options.push_back(describe(*option));
    for (const CLI::App* command : app.get_subcommands(nullptr)) description.commands.push_back(describe(*command));
    return description;
}

} // namespace vorn
