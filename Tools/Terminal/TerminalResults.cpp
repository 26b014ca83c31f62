#include "Tools/Terminal/TerminalResults.h"

#include "Platform/Base/PrintableText.h"
#include "Tools/Terminal/StateJSON.h"
#include "VornMac/Text/ByteText.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/QuestText.h"

#include <string_view>

#include <fmt/format.h>

namespace vorn {
namespace {

using JSON = StateJSON;

std::string line(std::string_view label, const std::string& value)
{
    return fmt::format("{:<16}{}\n", label, printable(value));
}

/// In ASCII, so that no control character reaches the terminal.
std::string dump(const JSON& document)
{
    return document.dump(2, ' ', true, JSON::error_handler_t::replace) + "\n";
}

} // namespace

std::string textOf(const SubmissionStatus& submission)
{
    return line("Submission", submission.id) + line("  status", submission.status.word());
}

std::string textOf(const StatusReport& report)
{
    const QuestWire& quest = report.nimbrel.quest;
    const QuestAvailability availability(quest, report.now);
    std::string text = line("Linked as", report.user.displayName) + line("Quest", quest.title.value_or(quest.id)) +
                       line("  status", quest.status) + line("  next upload", availabilityLine(availability)) +
                       line("  reward", rewardText(report.nimbrel)) +
                       line("  upload limit", bytesText(report.nimbrel.maxBytes));
    if (report.submission)
        text +=
            textOf(*report.submission) + line("  review", reviewLine(*report.submission, rewardText(report.nimbrel)));
    return text;
}

std::string jsonOf(const StatusReport& report)
{
    const QuestWire& quest = report.nimbrel.quest;
    const QuestAvailability availability(quest, report.now);
    return dump({{"user", {{"id", report.user.id}, {"displayName", report.user.displayName}}},
                 {"quest",
                  {{"id", quest.id},
                   {"title", orNull(quest.title)},
                   {"status", quest.status},
                   {"availability", availabilityName(availability)},
                   {"canUpload", availability.canUpload()},
                   {"availableAt", orNull(quest.availableAt)},
                   {"rejectionReasonKey", orNull(quest.rejectionReasonKey)},
                   {"rewardUsd", orNull(quest.rewardUsd)},
                   {"maxBytes", report.nimbrel.maxBytes}}},
                 {"submission", report.submission ? jsonOf(*report.submission) : JSON(nullptr)}});
}

} // namespace vorn
