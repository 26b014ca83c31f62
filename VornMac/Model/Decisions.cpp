#include "VornMac/Model/Decisions.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "VornMac/Text/ErrorText.h"
#include "VornMacCore/Client/APIError.h"

namespace vorn::decide {
namespace {

template <class Error>
const Error* as(const std::exception& error)
{
    return dynamic_cast<const Error*>(&error);
}

} // namespace

Step stepAfterConsent(FullDiskAccessStatus access)
{
    return access == FullDiskAccessStatus::granted ? Step::find : Step::access;
}

Step stepAfterSignIn(bool hasAcceptedConsent, FullDiskAccessStatus access)
{
    return hasAcceptedConsent ? stepAfterConsent(access) : Step::consent;
}

SessionTrouble sessionTrouble(const std::exception& error)
{
    const auto* refusal = as<APIError>(error);
    if (refusal == nullptr) return SessionTrouble::none;
    if (refusal->is<APIError::SessionChanged>()) return SessionTrouble::replaced;
    const bool ended = refusal->is<APIError::NotSignedIn>() || refusal->is<APIError::SessionExpired>();
    return ended ? SessionTrouble::ended : SessionTrouble::none;
}

CodeTurn codeTurn(const DeviceLinkPoll& answer)
{
    switch (answer.status) {
    case DeviceLinkStatus::scanned: return CodeTurn::showScanned;
    case DeviceLinkStatus::rejected: return CodeTurn::declined;
    case DeviceLinkStatus::expired: return CodeTurn::expired;
    case DeviceLinkStatus::approved: return answer.session ? CodeTurn::signIn : CodeTurn::expired;
    case DeviceLinkStatus::pending: break;
    }
    return CodeTurn::keepPolling;
}

std::optional<ScanPhase> phaseBeforeReading(const NimbrelState& nimbrel)
{
    return nimbrel.handles.empty() ? std::optional<ScanPhase>(phase::NotConfigured{}) : std::nullopt;
}

ScanPhase phaseAfterReading(bool hasMessages)
{
    return hasMessages ? ScanPhase(phase::Found{}) : ScanPhase(phase::NotFound{});
}

FailedScan failedScan(const std::exception& error)
{
    const auto* refusal = as<APIError>(error);
    if (refusal != nullptr && refusal->isLaneOff()) return {.phase = phase::Unavailable{}};
    const auto* unread = as<NimbrelExportError>(error);
    if (unread != nullptr && unread->is<NimbrelExportError::AccessDenied>()) return {};
    const bool isLogged = unread != nullptr && unread->is<NimbrelExportError::Database>();
    return {.phase = errorText(error), .isLogged = isLogged};
}

bool isTooLarge(std::int64_t archiveBytes, const std::optional<NimbrelState>& nimbrel)
{
    return nimbrel && archiveBytes > nimbrel->maxBytes;
}

std::optional<UploadPhase> phaseAfterProgress(const UploadPhase& now, const UploadProgress& progress)
{
    if (!std::holds_alternative<phase::Uploading>(now)) return std::nullopt;
    const double fraction = progress.fraction();
    return fraction >= 1 ? UploadPhase(phase::Finishing{}) : UploadPhase(phase::Uploading{fraction});
}

} // namespace vorn::decide
