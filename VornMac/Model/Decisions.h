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

/// The application's decisions, as plain functions of its state and of what has happened: the model's jobs only wait.
/// `Timing` says for how long. Threads: any.
namespace vorn::decide {

/// The step after the consent: skips `access` if that is granted.
Step stepAfterConsent(FullDiskAccessStatus access);

/// The first step of a signed-in user: skips what is already accepted or granted.
Step stepAfterSignIn(bool hasAcceptedConsent, FullDiskAccessStatus access);

/// What a call's error means for the session.
enum class SessionTrouble {
    none,     ///< concerns the call alone
    replaced, ///< another session has replaced this one, or none is stored
    ended,
};
SessionTrouble sessionTrouble(const std::exception& error);

/// What to do after the service's answer about a code.
enum class CodeTurn { keepPolling, showScanned, declined, expired, signIn };
CodeTurn codeTurn(const DeviceLinkPoll& answer);

/// The scan's phase if the quest lacks what reading the chat needs; absent if the chat is to be read.
std::optional<ScanPhase> phaseBeforeReading(const NimbrelState& nimbrel);
ScanPhase phaseAfterReading(bool hasMessages);

/// What follows from a failed scan, which may lead to another step.
struct FailedScan {
    std::optional<ScanPhase> phase; ///< absent if the user needs `Step::access` instead
    bool isLogged = false;
};
FailedScan failedScan(const std::exception& error);

bool isTooLarge(std::int64_t archiveBytes, const std::optional<NimbrelState>& nimbrel);

/// The upload's phase after a report of `progress`; absent if the report comes too late to count.
std::optional<UploadPhase> phaseAfterProgress(const UploadPhase& now, const UploadProgress& progress);

} // namespace vorn::decide
