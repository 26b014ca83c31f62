#include "Tools/Terminal/CommandFailure.h"

#include "Platform/Base/PrintableText.h"
#include "Platform/Base/Text.h"
#include "Platform/HTTP/URLError.h"
#include "VornMac/Text/ErrorText.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/UploadError.h"

namespace vorn {
namespace {

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

} // namespace

std::string spokenWords(const std::string& text)
{
    const std::string words = printable(text);
    return text::trimmed(words).empty() ? wordlessRefusal : words;
}

CommandFailure failureOf(const std::exception& error)
{
    if (const auto* failure = dynamic_cast<const CommandFailure*>(&error)) return *failure;
    return {statusOf(error), spokenWords(commandText(error))};
}

} // namespace vorn
