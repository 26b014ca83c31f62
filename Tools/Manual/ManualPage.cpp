#include "Tools/Manual/ManualPage.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace vorn {
namespace {

constexpr std::string_view exitStatus = "Exit status: ";

/// `text` escaped: otherwise hyphens could not be searched for, and a dot or quote at the start of a line would be a
/// macro.
std::string escaped(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        const bool beginsLine = out.empty() || out.back() == '\n';
        if (beginsLine && (c == '.' || c == '\'')) out += "\\&";
        if (c == '\\')
            out += "\\e";
        else if (c == '-')
            out += "\\-";
        else
            out += c;
    }
    return out;
}

std::string bold(std::string_view text)
{
    return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text)
{
    return "\\fI" + escaped(text) + "\\fR";
}

/// The description up to its first colon or full stop.
std::string summaryOf(const CommandDescription& program)
{
    const std::size_t end = std::min(program.text.find(": "), program.text.find('.'));
    std::string summary = program.text.substr(0, end);
    std::ranges::replace(summary, '\n', ' ');
    return summary;
}

std::string entry(const OptionDescription& option)
{
    std::string names;
    for (const std::string& name : option.names) names += (names.empty() ? "" : ", ") + bold(name);
    if (!option.isPositional && !option.valueName.empty()) names += " " + italic(option.valueName);
    std::string help = escaped(option.help);
    if (!option.defaultValue.empty()) help += escaped(" [" + option.defaultValue + "]");
    return ".TP\n" + names + "\n" + help + "\n";
}

std::string entries(const std::vector<OptionDescription>& options)
{
    std::string text;
    for (const OptionDescription& option : options) text += entry(option);
    return text;
}

std::string commands(const CommandDescription& program)
{
    std::string text = program.commands.empty() ? "" : ".SH COMMANDS\n";
    for (const CommandDescription& command : program.commands)
        text += ".SS " + escaped(command.name) + "\n" + escaped(command.text) + "\n" + entries(command.options);
    return text;
}

/// A paragraph with indented lines keeps all its line breaks.
std::string paragraph(std::string_view text)
{
    const bool isTable = text.find("\n ") != std::string_view::npos;
    return isTable ? ".PP\n.nf\n" + escaped(text) + "\n.fi\n" : ".PP\n" + escaped(text) + "\n";
}

std::string footer(std::string text)
{
    std::string notes;
    std::string status;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        const std::string part = CLI::detail::trim_copy(text.substr(0, end));
        text.erase(0, std::min(end + 2, text.size()));
        if (part.starts_with(exitStatus))
            status = ".SH EXIT STATUS\n" + escaped(part.substr(exitStatus.size())) + "\n";
        else if (!part.empty())
            notes += paragraph(part);
    }
    return (notes.empty() ? "" : ".SH NOTES\n" + notes) + status;
}

std::string synopsis(const CommandDescription& program)
{
    std::string text = ".B " + escaped(program.name) + "\n[" + italic("OPTIONS") + "]\n";
    if (!program.commands.empty()) text += "[" + italic("COMMAND") + "]\n";
    return text;
}

} // namespace

std::string manualPage(const CommandDescription& program, const std::string& version)
{
    std::string title = program.name;
    std::ranges::transform(title, title.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return fmt::format(".TH {} 1 \"\" \"Vorn {}\" \"Vorn\"\n"
                       ".SH NAME\n{} \\- {}\n"
                       ".SH SYNOPSIS\n{}"
                       ".SH DESCRIPTION\n{}\n"
                       ".SH OPTIONS\n{}{}{}",
                       escaped(title), version, escaped(program.name), escaped(summaryOf(program)), synopsis(program),
                       escaped(program.text), entries(program.options), commands(program), footer(program.footer));
}

} // namespace vorn
