#include "VornMac/Application/CommandLine.h"

#include "Platform/Base/PrintableText.h"
#include "VornMac/Composition/OverrideKeys.h"
#include "VornMacCore/Wire/Application.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/format.h>

namespace vorn {
namespace {

std::string help()
{
    std::string text = fmt::format("Usage: VornMac [-Key value]...\n\n{}\n\n", CommandLine::purpose);
    const auto line = [&](const std::string& option, const char* meaning) {
        text += fmt::format("  {:<35} {}\n", option, meaning);
    };
    for (const overrides::Key& key : overrides::keysOf(overrides::Program::window))
        line(fmt::format("-{} {}", key.name, key.value), key.help);
    line("--version", "print the version");
    line("--help", "print this");
    return text;
}

/// Qt's options that take a value, as the next word or after "=". They may start with one "-" or two.
constexpr std::array<std::string_view, 15> valuesOfQt{
    "display",       "geometry", "icon",    "name",        "platform",      "platformpluginpath",
    "platformtheme", "plugin",   "session", "qwindowicon", "qmljsdebugger", "qwindowgeometry",
    "qwindowtitle",  "style",    "title"};
constexpr std::array<std::string_view, 3> flagsOfQt{"dograb", "nograb", "reverse"};

/// How many words Qt takes, `word` included; 0 if it is not an option of Qt.
int countForQt(std::string_view word)
{
    if (!word.starts_with('-')) return 0;
    word.remove_prefix(word.starts_with("--") ? 2 : 1);
    const std::string_view name = word.substr(0, word.find('='));
    if (std::ranges::find(flagsOfQt, word) != flagsOfQt.end()) return 1;
    if (std::ranges::find(valuesOfQt, name) == valuesOfQt.end()) return 0;
    return name.size() < word.size() ? 1 : 2;
}

bool has(const std::vector<std::string>& arguments, const char* option)
{
    return std::ranges::find(arguments, option) != arguments.end();
}

} // namespace

CommandLine::CommandLine(int argc, char** argv) : arguments_(argv, argv + argc)
{
    defaults_ = ArgumentDefaults::takenFrom(arguments_);
    for (std::string& argument : arguments_) values_.push_back(argument.data());
    count_ = static_cast<int>(values_.size());
    values_.push_back(nullptr);
}

std::optional<std::string> CommandLine::answer() const
{
    if (has(arguments_, "--help") || has(arguments_, "-h")) return help();
    if (has(arguments_, "--version")) return "Vorn " + applicationBundle().version() + "\n";
    return std::nullopt;
}

std::optional<std::string> CommandLine::unknown() const
{
    const auto all = words();
    for (std::size_t at = 0; at < all.size();) {
        const bool isTheSystems = all[at].starts_with("-psn_"); // some versions of macOS pass a process serial number
        const int taken = isTheSystems ? 1 : countForQt(all[at]);
        if (taken == 0) return all[at];
        at += static_cast<std::size_t>(taken);
    }
    return std::nullopt;
}

std::optional<std::string> CommandLine::mistake() const
{
    if (auto wrong = overrides::mistakeOnLine(defaults_, words(), overrides::Program::window)) return wrong;
    const auto stray = unknown();
    return stray ? std::optional("There is no argument " + printable(*stray)) : std::nullopt;
}

} // namespace vorn
