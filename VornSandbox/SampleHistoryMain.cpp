#include "Platform/Base/Dates.h"
#include "Platform/Base/InterruptWatch.h"
#include "Platform/Base/PrintableText.h"
#include "VornSandbox/SampleHistory/SampleHistory.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <system_error>

namespace {

using namespace vorn;

constexpr int failure = 1;
constexpr int wrongCommandLine = 2;

struct CommandLine {
    std::filesystem::path output;
    SampleHistoryOptions options;
    bool json = false;
};

/// Decimal digits alone: the library takes a leading zero for a number to the base 8.
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

/// Reads the arguments; an exit code when there is nothing more to do.
std::optional<int> parse(int argc, char** argv, CommandLine& line)
{
    CLI::App app{
        "Writes a Messages database with an invented history: conversations with an assistant and with others.",
        "vorn-sample-history"};
    const auto numberOfRows = numberUpTo(SampleHistoryOptions::mostMessages);
    std::string until;
    app.add_option("--output", line.output, "The database to write, such as chat.db");
    app.add_option("--messages", line.options.messages, "Rows of all conversations")
        ->check(numberOfRows)
        ->capture_default_str();
    app.add_option("--seed", line.options.seed, "Equal seeds give equal histories")
        ->check(numberUpTo(std::numeric_limits<decltype(line.options.seed)>::max()))
        ->capture_default_str();
    app.add_option("--handle", line.options.handles, "A handle of the assistant; may be repeated")
        ->allow_extra_args(false);
    app.add_option("--in-log", line.options.inLog, "So many of the newest rows stay in the write-ahead log")
        ->check(numberOfRows)
        ->capture_default_str();
    app.add_option("--until", until, "No row is later than this time, such as 2026-03-01T09:15:00Z");
    app.add_flag("--only-assistant", line.options.onlyAssistant, "No conversations with others");
    app.add_flag("--force", line.options.replaceExisting, "Replace a database that is there");
    app.add_flag("--json", line.json, "Print the summary as JSON");
    app.set_version_flag("--version", "vorn-sample-history " VORN_VERSION);
    try {
        app.parse(argc, argv);
        if (app.count("--output") == 0) throw CLI::RequiredError("--output"); // after what is misspelt
        if (line.output == "-") throw CLI::ValidationError("--output", "must be a file, not standard output");
        if (const auto at = parseInternetDateTime(until)) {
            line.options.until = std::chrono::floor<std::chrono::seconds>(*at).time_since_epoch().count();
        } else if (!until.empty()) {
            throw CLI::ValidationError("--until", "not a time such as 2026-03-01T09:15:00Z: " + printable(until));
        }
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : wrongCommandLine;
    }
    return std::nullopt;
}

void to(nlohmann::json& json, const SampleConversation& conversation)
{
    json = {{"guid", conversation.guid},       {"service", conversation.service},   {"style", conversation.style},
            {"handles", conversation.handles}, {"exported", conversation.exported}, {"rows", conversation.rows}};
}

template <class T>
nlohmann::json orNull(const std::optional<T>& value)
{
    return value ? nlohmann::json(*value) : nlohmann::json();
}

nlohmann::json toJSON(const SampleExpectation& expected)
{
    return {{"rows", expected.rows},
            {"kept", expected.kept},
            {"prompts", expected.prompts},
            {"replies", expected.replies},
            {"skipped", expected.skipped},
            {"attachmentTypes", expected.attachmentTypes},
            {"edited", expected.edited},
            {"threaded", expected.threaded},
            {"withLinks", expected.withLinks},
            {"links", expected.links},
            {"withAttachments", expected.withAttachments},
            {"blobOnly", expected.blobOnly},
            {"characters", expected.characters},
            {"keptInLog", expected.keptInLog},
            {"firstAt", orNull(expected.firstAt)},
            {"lastAt", orNull(expected.lastAt)}};
}

void printJSON(const SampleHistorySummary& summary)
{
    nlohmann::json conversations = nlohmann::json::array();
    for (const SampleConversation& conversation : summary.conversations) to(conversations.emplace_back(), conversation);
    const nlohmann::json json{{"handles", summary.handles},   {"conversations", conversations},
                              {"messages", summary.messages}, {"attachments", summary.attachments},
                              {"inLog", summary.inLog},       {"expected", toJSON(summary.expected)}};
    fmt::print("{}\n", json.dump(2));
}

void printText(const SampleHistorySummary& summary, const std::filesystem::path& output)
{
    const SampleExpectation& expected = summary.expected;
    const auto day = [](std::optional<std::int64_t> at) {
        return at ? internetDateTime(Instant(std::chrono::seconds(*at))) : std::string("never");
    };
    fmt::print("{}: {} messages in {} conversations, {} of them in the log\n", output.string(), summary.messages,
               summary.conversations.size(), summary.inLog);
    fmt::print("with the assistant: {} rows; an export keeps {} ({} prompts, {} replies) from {} to {}\n",
               expected.rows, expected.kept, expected.prompts, expected.replies, day(expected.firstAt),
               day(expected.lastAt));
    for (const auto& [reason, count] : expected.skipped) fmt::print("  left out as {}: {}\n", reason, count);
    for (const std::string& handle : summary.handles) fmt::print("  --handle {}\n", handle);
}

void run(CommandLine& line, const InterruptWatch& interrupts)
{
    line.options.cancel = &interrupts.cancelFlag();
    const auto summary = writeSampleHistory(line.output, line.options);
    line.json ? printJSON(summary) : printText(summary, line.output);
}

} // namespace

int main(int argc, char** argv)
{
    CommandLine line;
    if (const auto code = parse(argc, argv, line)) return *code;
    const InterruptWatch interrupts;
    try {
        run(line, interrupts);
        return 0;
    } catch (const Cancelled&) {
        return interrupts.exitStatus();
    } catch (const std::invalid_argument& error) {
        fmt::print(stderr, "vorn-sample-history: {}\n", error.what());
        return wrongCommandLine;
    } catch (const std::filesystem::filesystem_error& error) {
        const bool isThere = error.code() == std::errc::file_exists;
        fmt::print(stderr, "vorn-sample-history: {}\n",
                   isThere ? printable(error.path1().string()) + " is there already. --force replaces it."
                           : error.what());
        return failure;
    } catch (const std::exception& error) {
        fmt::print(stderr, "vorn-sample-history: {}\n", error.what());
        return failure;
    }
}
