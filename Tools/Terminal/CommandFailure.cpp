#include "Tools/Terminal/CommandFailure.h"

#include "Platform/HTTP/URLError.h"
#include "Tools/Terminal/Describe.h"
#include "Tools/Terminal/PrintableText.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Upload/UploadError.h"

#include <filesystem>
#include <string_view>

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

/// Nothing retries once the program has ended, whatever the sentence for a window says.
std::string sentenceOf(const std::exception& error)
{
    std::string sentence = describe(error);
    if (dynamic_cast<const URLError*>(&error) == nullptr) return sentence;
    constexpr std::string_view promise = " Vorn will retry.";
    if (sentence.ends_with(promise)) sentence.erase(sentence.size() - promise.size());
    return sentence + " Run it again.";
}

} // namespace

CommandFailure failureOf(const std::exception& error)
{
    if (const auto* failure = dynamic_cast<const CommandFailure*>(&error)) return *failure;
    if (const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&error)) {
        // Only the archive is read here, and its name may hold anything.
        return {TerminalStatus::archiveUnreadable,
                "Vorn couldn't read " + printable(file->path1().string()) + ": " + file->code().message() + "."};
    }
    return {statusOf(error), printable(sentenceOf(error))};
}

} // namespace vorn
