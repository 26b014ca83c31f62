#include "VornMac/Model/Describe.h"

#include "NimbrelExportKit/Records/NimbrelExportError.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Quest/RewardFormat.h"
#include "VornMacCore/Upload/UploadError.h"

namespace vorn {
namespace {

std::string describeTransfer(URLError::Code code)
{
    switch (code) {
    case URLError::Code::notConnectedToInternet:
    case URLError::Code::networkConnectionLost: return "You're offline. Vorn will retry.";
    case URLError::Code::timedOut: return "The connection timed out. Vorn will retry.";
    default: return "Vorn can't reach the server right now.";
    }
}

} // namespace

std::string describe(const std::exception& error)
{
    if (const auto* transfer = dynamic_cast<const URLError*>(&error)) return describeTransfer(transfer->code());
    if (const auto* api = dynamic_cast<const APIError*>(&error)) return api->what();
    if (const auto* upload = dynamic_cast<const UploadError*>(&error)) return upload->what();
    const auto* exported = dynamic_cast<const NimbrelExportError*>(&error);
    const std::string text = exported != nullptr ? userText(*exported) : "";
    return text.empty() ? "Something went wrong." : text; // `what()` of any other error is for programmers
}

std::string rewardText(const std::optional<NimbrelState>& quest)
{
    const auto amount = quest ? RewardFormat::usd(quest->quest.rewardUsd) : std::nullopt;
    return amount.value_or("the quest reward");
}

} // namespace vorn
