#include "Tools/Terminal/TerminalOptions.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Support/MistakeText.h"
#include "Tools/Support/Preflight.h"
#include "VornMac/Composition/OverrideKeys.h"

#include <algorithm>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace vorn {
namespace {

constexpr const char* program = "vorn-terminal";
// Wrapped by hand: CLI11 wraps neither of the two.
constexpr const char* description = "Vorn for Mac in a terminal: links this Mac to your account, asks what you agree\n"
                                    "to, finds your chat with Nimbrel in Messages, uploads it, and shows what the\n"
                                    "review said. With a command, it does only that. Results go to standard\n"
                                    "output, everything else to standard error.";

constexpr const char* footer = "\n"
                               "Without colours (NO_COLOR, or output that is not a terminal) the QR code is drawn\n"
                               "for a dark background, unless COLORFGBG or --background says that it is light.\n\n"
                               "Unattended (standard error is not a terminal, or --yes), an upload tries one code\n"
                               "only and ends with the first failure. Ctrl-C leaves nothing behind.\n\n"
                               "Exit status: 0 done; 2 wrong arguments; 3 this Mac is not linked, or no\n"
                               "longer; 5 the quest takes no upload now; 7 the service cannot be reached; 8 the\n"
                               "upload stopped, or the service refused; 9 the review ended without a reward;\n"
                               "10 the keychain cannot be reached, or does not do what is asked of it; 11 you\n"
                               "said no; 12 Messages cannot be read; 13 there is no conversation with Nimbrel\n"
                               "on this Mac; 1 any other problem; 128+N ended by signal N.";

std::string overridesHelp()
{
    std::string text = "Anywhere on the line, -Key value overrides a user default for this run:\n";
    for (const overrides::Key& key : overrides::keysOf(overrides::Program::terminal))
        text += fmt::format("  -{} {}\n      {}\n", key.name, key.value, key.help);
    return text;
}

using Command = TerminalOptions::Command;
using Background = TerminalOptions::Background;

struct Texts {
    std::string submission;
    std::string search;
    std::string copy;
};

void addBackground(CLI::App& command, TerminalOptions& options)
{
    const auto read = [&options](const std::string& text) {
        if (text != "dark" && text != "light") {
            throw CLI::ValidationError("--background", "must be dark or light, not \"" + printable(text) + "\"");
        }
        options.background = text == "dark" ? Background::dark : Background::light;
    };
    command
        .add_option_function<std::string>("--background", read,
                                          "The terminal's background, for a QR code without colours")
        ->type_name("dark|light");
}

void addCommand(CLI::App& app, TerminalOptions& options, Command command, const char* name, const char* help,
                const std::function<void(CLI::App&)>& addOptions)
{
    CLI::App* subcommand = app.add_subcommand(name, help);
    subcommand->callback([&options, command] { options.command = command; });
    addOptions(*subcommand);
}

void addWholePath(CLI::App& app, TerminalOptions& options)
{
    app.add_flag("--yes", options.yes, "Agrees to everything that is asked, for scripts");
    app.add_flag("--json", options.json, "Prints every change of state as a line of JSON");
    app.add_flag_callback(
        "--no-keychain", [&options] { options.keychain = false; },
        "Links anew, for this run only, and leaves the keychain alone");
    addBackground(app, options);
}

void addCommands(CLI::App& app, TerminalOptions& options, Texts& texts)
{
    app.footer(overridesHelp() + footer);
    app.set_version_flag("--version", "vorn-terminal " VORN_VERSION);
    app.require_subcommand(0, 1);
    addWholePath(app, options);
    addCommand(
        app, options, Command::show, "show", "Shows every message that would be uploaded, and what is left out",
        [&](CLI::App& show) {
            CLI::Option* search =
                show.add_option("--search", texts.search, "Only the messages that hold this")->type_name("WORDS");
            show.add_option("--save", texts.copy, "Saves a copy of the archive, and sends nothing")
                ->type_name("FILE")
                ->excludes(search);
        });
    addCommand(app, options, Command::link, "link", "Shows a QR code for your phone and links this Mac to your account",
               [&](CLI::App& link) { addBackground(link, options); });
    addCommand(app, options, Command::status, "status", "Shows who is linked and how the quest stands",
               [&](CLI::App& status) {
                   status.add_option("SUBMISSION", texts.submission, "And how this submission stands");
                   status.add_flag("--json", options.json, "Print the result as JSON");
               });
    addCommand(app, options, Command::signOut, "sign-out", "Forgets the session here and tells the service",
               [](CLI::App&) {});
}

/// The mistake in these values; empty if there is none. SUBMISSION becomes one segment of a request's path.
std::string mistakeIn(const Texts& texts, const TerminalOptions& options)
{
    const bool isOnePart =
        !texts.submission.empty() && texts.submission != "." && texts.submission != ".." &&
        std::ranges::none_of(texts.submission, [](char c) { return c == '/' || c == '?' || c == '#'; });
    if (options.submission && !isOnePart)
        return "SUBMISSION must be a submission's identifier, as it is printed after an upload";
    if (options.copy == "" || options.copy == "-") return preflight::mustBeFileText("--save");
    return "";
}

/// The text about a word that is not the name of a command.
std::string unknownCommand(const CLI::App& app)
{
    const auto left = app.remaining();
    return "There is no command \"" + printable(left.front()) + "\", only show, link, status or sign-out";
}

TerminalOptionsEnd mistake(const std::string& text)
{
    return {mistakeText(text), true};
}

} // namespace

std::variant<TerminalOptions, TerminalOptionsEnd> parseTerminalOptions(int argc, const char* const* argv)
{
    TerminalOptions options;
    Texts texts;
    std::vector<std::string> arguments(argv + 1, argv + argc);
    options.defaults = ArgumentDefaults::takenFrom(arguments);
    const auto wrongOverride = overrides::mistakeOnLine(options.defaults, arguments, overrides::Program::terminal);
    std::ranges::reverse(arguments); // CLI11 takes them in reverse order

    CLI::App app(description, program);
    addCommands(app, options, texts);
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        return TerminalOptionsEnd{app.help(), false};
    } catch (const CLI::CallForVersion& version) {
        return TerminalOptionsEnd{std::string(version.what()) + "\n", false};
    } catch (const CLI::ParseError& error) {
        if (wrongOverride) return mistake(*wrongOverride);
        const auto left = app.remaining();
        const bool isWord = app.get_subcommands().empty() && !left.empty() && !left.front().starts_with('-');
        return mistake(isWord ? unknownCommand(app) : error.what());
    }
    if (wrongOverride) return mistake(*wrongOverride);
    if (app.got_subcommand("status") && app.get_subcommand("status")->count("SUBMISSION") > 0) {
        options.submission = texts.submission;
    }
    if (app.got_subcommand("show")) {
        const CLI::App* show = app.get_subcommand("show");
        if (show->count("--search") > 0) options.search = texts.search;
        if (show->count("--save") > 0) options.copy = texts.copy;
    }
    if (const std::string wrong = mistakeIn(texts, options); !wrong.empty()) return mistake(wrong);
    return options;
}

void describeTerminalOptions(const std::function<void(const CLI::App&)>& read)
{
    TerminalOptions options;
    Texts texts;
    CLI::App app(description, program);
    addCommands(app, options, texts);
    read(app);
}

} // namespace vorn
