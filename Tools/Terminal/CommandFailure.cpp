#include "Tools/Terminal/CommandFailure.h"

#include "Platform/Base/PrintableText.h"
#include "Platform/Base/Text.h"
#include "Platform/HTTP/URLError.h"
#include "VornMac/Model/Describe.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Upload/UploadError.h"

#include <string_view>

namespace vorn {
namespace {

constexpr std::string_view again = " Run it again.";

TerminalStatus statusOf(const APIError& error)
{
    if (error.isLaneOff()) return TerminalStatus::notNow;
    const bool answered = error.is<APIError::HTTP>() || error.is<APIError::InvalidResponse>();
    return answered ? TerminalStatus::refused : TerminalStatus::notLinked;
}

TerminalStatus statusOf(const std::exception& error)
{
    if (const auto* api = dynamic_cast<const APIError*>(&error)) return statusOf(*api);
    if (dynamic_cast<const UploadError*>(&error) != nullptr) return TerminalStatus::refused;
    if (dynamic_cast<const URLError*>(&error) != nullptr) return TerminalStatus::unreachable;
    return TerminalStatus::failed;
}

std::string sentenceOf(const std::exception& error)
{
    const std::string words = lastWords(describe(error));
    const bool isUnanswered = dynamic_cast<const URLError*>(&error) != nullptr;
    return isUnanswered && !words.ends_with(again) ? words + std::string(again) : words;
}

} // namespace

std::string spokenWords(const std::string& text)
{
    const std::string words = printable(text);
    return text::trimmed(words).empty() ? "The server refused and did not say why." : words;
}

std::string lastWords(const std::string& text)
{
    constexpr std::string_view promise = " Vorn will retry.";
    if (!text.ends_with(promise)) return spokenWords(text);
    return spokenWords(text.substr(0, text.size() - promise.size())) + std::string(again);
}

CommandFailure failureOf(const std::exception& error)
{
    if (const auto* failure = dynamic_cast<const CommandFailure*>(&error)) return *failure;
    return {statusOf(error), sentenceOf(error)};
}

} // namespace vorn
