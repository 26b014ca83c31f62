#include "Tools/Export/ExportOptions.h"

#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/PrintableText.h"
#include "Platform/Base/Text.h"
#include "Tools/Support/MistakeText.h"
#include "Tools/Support/Preflight.h"

#include <algorithm>

#include <CLI/CLI.hpp>

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr const char* program = "vorn-export";
constexpr const char* description =
    "Packs your one-to-one conversation with the assistant from a Messages database into the archive\n"
    "that the service reviews. The database is only read, from a private copy that is deleted right after.";

constexpr const char* exitStatuses =
    "Exit status: 0 the archive is written; 2 wrong arguments; 3 no Messages database; 4 access denied;\n"
    "5 the file is not a database, or stayed unreadable; 6 another database error; 7 the output cannot be\n"
    "written; 8 the private copy cannot be made; 9 the statistics cannot be printed; 10 there is nothing\n"
    "to export, and nothing was written; 1 any other problem; 128+N ended by signal N.";

/// Empty if the user has no home folder.
fs::path usersDatabase()
{
    try {
        return usersMessagesDatabase();
    } catch (const NoHomeFolder&) {
        return {};
    }
}

std::string checkHandle(const std::string& handle)
{
    return text::trimmed(handle).empty() ? "a handle must not be blank" : "";
}

std::string checkTime(const std::string& text)
{
    return parseInternetDateTime(text) ? "" : "not a time like 2026-03-01T09:15:00Z: " + printable(text);
}

ExportOptionsEnd mistake(const std::string& text)
{
    return {mistakeText(text), true};
}

/// Options that are read as text first.
struct Texts {
    std::string database;
    std::string output;
    std::string time;
};

void addOptions(CLI::App& app, ExportOptions& options, Texts& texts)
{
    app.footer(exitStatuses);
    app.set_version_flag("--version", "vorn-export " VORN_VERSION);
    app.add_option("--database", texts.database, "The Messages database (default: this user's own)")->type_name("DB");
    app.add_option("--handle", options.handles,
                   "A phone number, e-mail address or business identifier of the assistant; repeatable")
        ->allow_extra_args(false)
        ->check(CLI::Validator(checkHandle, ""))
        ->type_name("H");
    app.add_option("--output", texts.output, "Where the archive goes; what is there is replaced")->type_name("OUT.zip");
    app.add_option("--exported-at", texts.time, "The time that the archive states (default: now)")
        ->check(CLI::Validator(checkTime, ""))
        ->type_name("TIME");
    app.add_flag("--json", options.json, "Print the statistics as JSON");
    app.add_flag("--allow-empty", options.allowEmpty, "Write an archive even if there is nothing to put into it");
}

} // namespace

std::variant<ExportOptions, ExportOptionsEnd> parseExportOptions(int argc, const char* const* argv, Instant now)
{
    ExportOptions options;
    Texts texts;
    CLI::App app(description, program);
    addOptions(app, options, texts);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        return ExportOptionsEnd{app.help(), false};
    } catch (const CLI::CallForVersion& version) {
        return ExportOptionsEnd{std::string(version.what()) + "\n", false};
    } catch (const CLI::ParseError& error) {
        const auto left = app.remaining();
        const auto key = std::ranges::find_if(left, [](const auto& word) { return word.starts_with("-Vorn"); });
        if (key == left.end()) return mistake(error.what());
        return mistake("There is no " + printable(*key) + " here. --database names another database");
    }
    // Not CLI11's `required`: it would report missing options before misspelt ones.
    for (const char* option : {"--handle", "--output"})
        if (app.count(option) == 0) return mistake(option + std::string(" is required"));
    if (texts.output.empty() || texts.output == "-") return mistake(preflight::mustBeFileText("--output"));
    options.isUsersOwn = texts.database.empty();
    options.database = options.isUsersOwn ? usersDatabase() : fs::path(texts.database);
    options.output = texts.output;
    options.exportedAt = parseInternetDateTime(texts.time).value_or(now); // already checked, or absent
    if (preflight::touchesDatabase(options.output, options.database))
        return ExportOptionsEnd{preflight::mustNotBeDatabaseText("--output") + "\n", true};
    return options;
}

void describeExportOptions(const std::function<void(const CLI::App&)>& read)
{
    ExportOptions options;
    Texts texts;
    CLI::App app(description, program);
    addOptions(app, options, texts);
    read(app);
}

} // namespace vorn
