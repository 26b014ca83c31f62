#pragma once

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/Step.h"
#include "VornMacCore/Client/UploadProgress.h"
#include "VornMacCore/Wire/LinkingRecords.h"
#include "VornMacCore/Wire/QuestRecords.h"

#include <cstdint>
#include <exception>
#include <optional>

/// What the application does next, as plain functions of its state and of what has happened: the flows only wait.
/// `Timing` says when. Threads: any.
namespace vorn::decide {

/// Where a user goes who has accepted the consent.
Step stepAfterConsent(FullDiskAccessStatus access);

/// Where a signed-in user goes.
Step stepAfterSignIn(bool hasAcceptedConsent, FullDiskAccessStatus access);

/// What an error of a call means for the session.
enum class SessionTrouble {
    none,     ///< the call's own trouble
    replaced, ///< somebody has signed in since
    ended,
};
SessionTrouble sessionTrouble(const std::exception& error);

/// What follows an answer about a code.
enum class CodeTurn { keepPolling, showScanned, declined, expired, signIn };
CodeTurn codeTurn(const DeviceLinkPoll& answer);

/// What the find step shows of the quest before anything is read; nothing when the chat is to be read.
std::optional<ScanPhase> phaseBeforeReading(const NimbrelState& nimbrel);
ScanPhase phaseAfterReading(bool hasMessages);

/// What follows a failed search. It may send the user to another step.
struct FailedScan {
    std::optional<ScanPhase> phase; ///< nothing when the user needs `Step::access` instead
    bool isLogged = false;
};
FailedScan failedScan(const std::exception& error);

bool isTooLarge(std::int64_t archiveBytes, const std::optional<NimbrelState>& nimbrel);

/// The upload's phase once `progress` is reported; nothing when a report comes too late to count.
std::optional<UploadPhase> phaseAfterProgress(const UploadPhase& now, const UploadProgress& progress);

} // namespace vorn::decide
