#include "Tools/Manual/Completions.h"

#include <set>
#include <string_view>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace vorn {
namespace {

using Value = OptionDescription::Value;

/// `text` with a backslash before each character that is in `special`.
std::string escaped(std::string_view text, std::string_view special)
{
    std::string out;
    for (const char c : text) {
        if (special.find(c) != std::string_view::npos) out += '\\';
        out += c;
    }
    return out;
}

/// `text` quoted as one word of a POSIX shell.
std::string shellWord(const std::string& text)
{
    return "'" + CLI::detail::find_and_replace(text, "'", "'\\''") + "'";
}

std::string bashWords(const CommandDescription& command)
{
    std::vector<std::string> words;
    for (const OptionDescription& option : command.options)
        if (!option.isPositional) words.insert(words.end(), option.names.begin(), option.names.end());
    for (const CommandDescription& inner : command.commands) words.push_back(inner.name);
    return fmt::format("'{}'", fmt::join(words, " "));
}

std::string bashReply(const OptionDescription& option)
{
    switch (option.value) {
    case Value::file: return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- \"$cur\")";
    case Value::folder: return "compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- \"$cur\")";
    case Value::oneOf:
        return fmt::format("mapfile -t COMPREPLY < <(compgen -W '{}' -- \"$cur\")", fmt::join(option.words(), " "));
    case Value::text:
    case Value::none: break;
    }
    return "COMPREPLY=()";
}

/// Adds a case for each option that takes a value, of `command` and of its subcommands.
void collectBashValues(const CommandDescription& command, std::set<std::string>& cases)
{
    for (const OptionDescription& option : command.options) {
        if (option.value == Value::none || option.isPositional) continue;
        cases.insert(fmt::format("    {}) {}; return ;;\n", fmt::join(option.names, "|"), bashReply(option)));
    }
    for (const CommandDescription& inner : command.commands) collectBashValues(inner, cases);
}

std::string bashValues(const CommandDescription& program)
{
    std::set<std::string> cases; // commands share options, and each pattern must appear once
    collectBashValues(program, cases);
    return fmt::format("{}", fmt::join(cases, ""));
}

std::string bashCommands(const CommandDescription& program)
{
    if (program.commands.empty()) return "";
    std::string cases;
    for (const CommandDescription& command : program.commands)
        cases += fmt::format("      {}) words={} ;;\n", command.name, bashWords(command));
    return "  local word\n  for word in \"${COMP_WORDS[@]:1:COMP_CWORD-1}\"; do\n    case $word in\n" + cases +
           "    esac\n  done\n";
}

std::string zshAction(const OptionDescription& option)
{
    switch (option.value) {
    case Value::file: return "_files";
    case Value::folder: return "_files -/";
    case Value::oneOf: return fmt::format("({})", fmt::join(option.words(), " "));
    case Value::text:
    case Value::none: break;
    }
    return "";
}

/// The arguments for zsh's `_arguments`, one per line.
std::string zshArguments(const CommandDescription& command)
{
    std::string lines;
    for (const OptionDescription& option : command.options) {
        if (option.isPositional) continue;
        for (const std::string& name : option.names) {
            const std::string excluded =
                option.names.size() > 1 ? fmt::format("({})", fmt::join(option.names, " ")) : "";
            std::string line = (option.repeats ? "*" : excluded) + name + "[" + escaped(option.help, "[]:\\") + "]";
            if (option.value != Value::none) line += ":" + option.valueName + ":" + zshAction(option);
            lines += " \\\n    " + shellWord(line);
        }
    }
    return lines;
}

std::string zshCommands(const CommandDescription& program)
{
    std::string words;
    for (const CommandDescription& command : program.commands)
        words += (words.empty() ? "" : " ") + escaped(command.name + ":" + escaped(command.text, "'\" ()"), ":");
    return words.empty() ? "" : " \\\n    " + shellWord("1:command:((" + words + "))");
}

std::string fishQuoted(const std::string& text)
{
    return "'" + escaped(text, "'\\") + "'";
}

std::string fishOption(const std::string& program, const std::string& condition, const OptionDescription& option)
{
    std::string line = "complete -c " + program + condition;
    for (const std::string& name : option.names) {
        const bool isLong = name.starts_with("--");
        line += isLong ? " -l " + name.substr(2) : (name.size() == 2 ? " -s " : " -o ") + name.substr(1);
    }
    switch (option.value) {
    case Value::file: line += " -r -F"; break;
    case Value::folder: line += " -x -a '(__fish_complete_directories)'"; break;
    case Value::oneOf: line += fmt::format(" -x -a '{}'", fmt::join(option.words(), " ")); break;
    case Value::text: line += " -x"; break;
    case Value::none: break;
    }
    return line + " -d " + fishQuoted(option.help) + "\n";
}

std::string fishOptions(const std::string& program, const std::string& condition, const CommandDescription& command)
{
    std::string lines;
    for (const OptionDescription& option : command.options)
        if (!option.isPositional) lines += fishOption(program, condition, option);
    return lines;
}

} // namespace

std::string bashCompletion(const CommandDescription& program)
{
    const std::string function = "_" + CLI::detail::find_and_replace(program.name, "-", "_");
    return fmt::format("{0}() {{\n"
                       "  local cur=${{COMP_WORDS[COMP_CWORD]}} words={1}\n"
                       "  COMPREPLY=()\n"
                       "  case ${{COMP_WORDS[COMP_CWORD-1]}} in\n"
                       "{2}"
                       "  esac\n"
                       "{3}"
                       "  mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$cur\")\n"
                       "}}\n"
                       "complete -F {0} {4}\n",
                       function, bashWords(program), bashValues(program), bashCommands(program), program.name);
}

std::string zshCompletion(const CommandDescription& program)
{
    std::string text = "#compdef " + program.name + "\n";
    for (const CommandDescription& command : program.commands) {
        text += fmt::format("if (( ${{words[(I){0}]}} )); then\n  _arguments{1} \\\n    '1: :({0})'\n  return\nfi\n",
                            command.name, zshArguments(command));
    }
    return text + "_arguments" + zshArguments(program) + zshCommands(program) + "\n";
}

std::string fishCompletion(const CommandDescription& program)
{
    const std::string condition = program.commands.empty() ? "" : " -n __fish_use_subcommand";
    std::string text = "complete -c " + program.name + " -f\n" + fishOptions(program.name, condition, program);
    for (const CommandDescription& command : program.commands) {
        text += "complete -c " + program.name + condition + " -a " + command.name + " -d " + fishQuoted(command.text) +
                "\n";
        text += fishOptions(program.name, " -n '__fish_seen_subcommand_from " + command.name + "'", command);
    }
    return text;
}

} // namespace vorn
