#include "Tools/Terminal/TerminalOptions.h"

#include "Tools/Terminal/PrintableText.h"

#include <algorithm>
#include <vector>

#include <CLI/CLI.hpp>

namespace vorn {
namespace {

// Lines of 79 columns at most: CLI11 wraps neither of the two.
constexpr const char* description = "Vorn for Mac in a terminal: links this Mac to your account, uploads an archive\n"
                                    "of your Nimbrel chat, and shows what the review said. Results go to standard\n"
                                    "output, everything else to standard error.";

constexpr const char* footer = "Anywhere on the line, -Key value overrides a user default for this run:\n"
                               "  -VornAPIBaseURLOverride URL\n"
                               "      where the service is: https, or http on this very machine\n\n"
                               "Without colours (NO_COLOR, or output that is no terminal) the QR code is drawn\n"
                               "for a dark background, unless COLORFGBG or --background says that it is light.\n\n"
                               "An upload that nobody watches (standard error is no terminal) links with one\n"
                               "code only, and does not wait for a service that is down.\n\n"
                               "Exit status: 0 done; 2 wrong arguments; 3 this Mac is not linked, or not any\n"
                               "more; 4 the archive cannot be read; 5 the quest takes no upload now; 6 the\n"
                               "archive is larger than the upload limit; 7 the service cannot be reached;\n"
                               "8 the service or its storage refused; 9 the review ended without a reward;\n"
                               "10 the keychain cannot be reached, or does not do what is asked of it; 1 any\n"
                               "other problem; 128+N ended by signal N.";

using Command = TerminalOptions::Command;
using Background = TerminalOptions::Background;

struct Texts {
    std::string archive;
    std::string submission;
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

void addCommands(CLI::App& app, TerminalOptions& options, Texts& texts)
{
    app.require_subcommand(1);
    addCommand(app, options, Command::link, "link", "Shows a QR code for your phone and links this Mac to your account",
               [&](CLI::App& link) { addBackground(link, options); });
    addCommand(app, options, Command::upload, "upload",
               "Uploads an archive; links this Mac first when it is not linked", [&](CLI::App& upload) {
                   upload.add_option("ARCHIVE", texts.archive, "What vorn-export wrote")->required();
                   upload.add_flag("--watch", options.watch, "Then wait for the end of the review, at most 20 minutes");
                   upload.add_flag("--json", options.json, "Print the result as JSON");
                   upload.add_flag_callback(
                       "--no-keychain", [&options] { options.keychain = false; },
                       "Links anew, for this run only, and leaves the keychain alone");
                   addBackground(upload, options);
               });
    addCommand(
        app, options, Command::status, "status", "Shows who is linked and how the quest stands", [&](CLI::App& status) {
            auto* submission = status.add_option("SUBMISSION", texts.submission, "And how this submission stands");
            status.add_flag("--watch", options.watch, "Wait for the end of its review, at most 20 minutes")
                ->needs(submission);
            status.add_flag("--json", options.json, "Print the result as JSON");
        });
    addCommand(app, options, Command::signOut, "sign-out", "Forgets the session here and tells the service",
               [](CLI::App&) {});
}

/// What goes into the path of a request stays one part of it.
std::string mistakeIn(const Texts& texts, const TerminalOptions& options)
{
    const bool isOnePart =
        !texts.submission.empty() && texts.submission != "." && texts.submission != ".." &&
        std::ranges::none_of(texts.submission, [](char c) { return c == '/' || c == '?' || c == '#'; });
    const bool isAsked = options.submission.has_value();
    if (isAsked && !isOnePart) return "SUBMISSION must be a submission's identifier, as upload prints it";
    if (options.command == Command::upload && texts.archive.empty()) return "ARCHIVE must be a file";
    return "";
}

/// The mistake of a line on which no command was found.
std::string missingCommand(const CLI::App& app)
{
    constexpr const char* commands = "link, upload, status or sign-out";
    const auto left = app.remaining();
    if (left.empty()) return std::string("A command is missing: ") + commands;
    return "There is no command \"" + printable(left.front()) + "\", only " + commands;
}

TerminalOptionsEnd mistake(const std::string& text)
{
    return {text + "\nRun with --help for more information.\n", true};
}

} // namespace

std::variant<TerminalOptions, TerminalOptionsEnd> parseTerminalOptions(int argc, const char* const* argv)
{
    TerminalOptions options;
    Texts texts;
    std::vector<std::string> arguments(argv + 1, argv + argc);
    options.defaults = ArgumentDefaults::takenFrom(arguments);
    std::ranges::reverse(arguments); // as CLI11 takes them

    CLI::App app(description, "vorn-terminal");
    app.footer(footer);
    app.set_version_flag("--version", "vorn-terminal " VORN_VERSION);
    addCommands(app, options, texts);
    try {
        app.parse(arguments);
    } catch (const CLI::CallForHelp&) {
        return TerminalOptionsEnd{app.help(), false};
    } catch (const CLI::CallForVersion& version) {
        return TerminalOptionsEnd{std::string(version.what()) + "\n", false};
    } catch (const CLI::ParseError& error) {
        const bool hasCommand = !app.get_subcommands().empty();
        return mistake(hasCommand ? error.what() : missingCommand(app));
    }
    options.archive = texts.archive;
    if (app.got_subcommand("status") && app.get_subcommand("status")->count("SUBMISSION") > 0) {
        options.submission = texts.submission;
    }
    if (const std::string wrong = mistakeIn(texts, options); !wrong.empty()) return mistake(wrong);
    return options;
}

} // namespace vorn
