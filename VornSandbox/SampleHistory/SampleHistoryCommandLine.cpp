#include "VornSandbox/SampleHistory/SampleHistoryCommandLine.h"

#include "Platform/Base/Dates.h"
#include "Platform/Base/PrintableText.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <charconv>
#include <chrono>
#include <cstdint>
#include <limits>
#include <string>

namespace vorn {
namespace {

constexpr const char* program = "vorn-sample-history";
constexpr const char* description =
    "Writes a Messages database with an invented history: conversations with an assistant and with others.";

/// Only plain decimal digits: CLI11 reads a number with a leading zero as octal.
CLI::Validator numberUpTo(std::uint64_t most)
{
    return {[most](const std::string& text) {
                std::uint64_t value = 0;
                std::from_chars(text.data(), text.data() + text.size(), value);
                const bool fits = std::to_string(value) == text && value <= most;
                return fits ? std::string()
                            : fmt::format("\"{}\" is not a whole number from 0 to {}", printable(text), most);
            },
            ""};
}

void addOptions(CLI::App& app, SampleHistoryCommandLine& line, std::string& until)
{
    const auto numberOfRows = numberUpTo(SampleHistoryOptions::mostMessages);
    app.add_option("--output", line.output, "The database to write, such as chat.db")->type_name("DB");
    app.add_option("--messages", line.options.messages, "Rows of all conversations")
        ->check(numberOfRows)
        ->capture_default_str();
    app.add_option("--seed", line.options.seed, "Equal seeds give equal histories")
        ->check(numberUpTo(std::numeric_limits<decltype(line.options.seed)>::max()))
        ->capture_default_str();
    app.add_option("--handle", line.options.handles, "A handle of the assistant; may be repeated")
        ->allow_extra_args(false)
        ->type_name("H");
    app.add_option("--in-log", line.options.inLog, "How many of the newest rows stay in the write-ahead log alone")
        ->check(numberOfRows)
        ->capture_default_str();
    app.add_option("--until", until, "No row is later than this time, such as 2026-03-01T09:15:00Z")->type_name("TIME");
    app.add_flag("--only-assistant", line.options.onlyAssistant, "No conversations with others");
    app.add_flag("--force", line.options.replaceExisting, "Replace a database that is there");
    app.add_flag("--json", line.json, "Print the summary as JSON");
    app.set_version_flag("--version", "vorn-sample-history " VORN_VERSION);
}

} // namespace

std::optional<int> SampleHistoryCommandLine::parse(int argc, const char* const* argv, SampleHistoryCommandLine& line)
{
    CLI::App app{description, program};
    std::string until;
    addOptions(app, line, until);
    try {
        app.parse(argc, argv);
        if (app.count("--output") == 0) throw CLI::RequiredError("--output"); // so misspelt options come first
        if (line.output == "-") throw CLI::ValidationError("--output", "must be a file, not standard output");
        if (const auto at = parseInternetDateTime(until)) {
            line.options.until = std::chrono::floor<std::chrono::seconds>(*at).time_since_epoch().count();
        } else if (!until.empty()) {
            throw CLI::ValidationError("--until", "not a time such as 2026-03-01T09:15:00Z: " + printable(until));
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrong;
    }
    return std::nullopt;
}

void SampleHistoryCommandLine::describe(const std::function<void(const CLI::App&)>& read)
{
    CLI::App app{description, program};
    SampleHistoryCommandLine line;
    std::string until;
    addOptions(app, line, until);
    read(app);
}

} // namespace vorn
