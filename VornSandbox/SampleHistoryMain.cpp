#include "Platform/Base/Dates.h"
#include "Platform/Base/InterruptWatch.h"
#include "Platform/Base/PrintableText.h"
#include "VornSandbox/SampleHistoryTool/SampleHistoryCommandLine.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace {

using namespace vorn;

constexpr int failure = 1;

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

void run(SampleHistoryCommandLine& line, const InterruptWatch& interrupts)
{
    line.options.cancel = &interrupts.cancelFlag();
    const auto summary = writeSampleHistory(line.output, line.options);
    line.json ? printJSON(summary) : printText(summary, line.output);
}

} // namespace

int main(int argc, char** argv)
{
    SampleHistoryCommandLine line;
    if (const auto code = SampleHistoryCommandLine::parse(argc, argv, line)) return *code;
    const InterruptWatch interrupts;
    try {
        run(line, interrupts);
        return 0;
    } catch (const Cancelled&) {
        return interrupts.exitStatus();
    } catch (const std::invalid_argument& error) {
        fmt::print(stderr, "vorn-sample-history: {}\n", error.what());
        return SampleHistoryCommandLine::wrong;
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
