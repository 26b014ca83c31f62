#include "tests/documents/ProblemTexts.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/HTTP/URLError.h"
#include "Tools/Export/ExportFailure.h"
#include "Tools/Support/Preflight.h"
#include "Tools/Terminal/SessionKeychain.h"
#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/ErrorText.h"
#include "VornMac/Text/EverythingText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/KeychainText.h"
#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/UploadError.h"
#include "VornMacCore/Wire/RejectionCopy.h"

#include <cerrno>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <variant>

namespace vorn::testing {
namespace {

using Texts = std::vector<std::string>;

/// One text for each line of `text`: programs print them as lines of their own.
void add(Texts& texts, const std::string& text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) texts.push_back(line);
}

void add(Texts& texts, const ScreenText& screen)
{
    add(texts, screen.status.text);
    add(texts, screen.note);
    for (const std::string& hint : screen.hints) add(texts, hint);
}

void add(Texts& texts, const std::exception& error)
{
    add(texts, errorText(error).text);
    add(texts, commandText(error));
}

// All cases are listed below: add a new one there.
static_assert(std::variant_size_v<APIError::Reason> == 5);
static_assert(std::variant_size_v<UploadError::Reason> == 3);
static_assert(std::variant_size_v<NimbrelExportError::Reason> == 4);
static_assert(std::variant_size_v<ScanPhase> == 7);

void addErrors(Texts& texts)
{
    constexpr int lastCode = static_cast<int>(URLError::Code::requestBodyStreamExhausted);
    for (int code = 0; code <= lastCode; ++code) add(texts, URLError(static_cast<URLError::Code>(code)));
    add(texts, APIError(APIError::HTTP{404, {}, {}}));
    add(texts, APIError(APIError::HTTP{500, {}, {}}));
    add(texts, APIError(APIError::NotSignedIn{}));
    add(texts, APIError(APIError::SessionExpired{}));
    add(texts, APIError(APIError::SessionChanged{}));
    add(texts, APIError(APIError::InvalidResponse{}));
    add(texts, UploadError(UploadError::PartRefused{3, 500}));
    add(texts, UploadError(UploadError::MissingETag{3}));
    add(texts, UploadError(UploadError::NoAsset{}));
    add(texts, NimbrelExportError(NimbrelExportError::Database{{SQLiteError::Stage::step, 5, "locked"}}));
    add(texts, NimbrelExportError(NimbrelExportError::NoDatabase{}));
    add(texts, NimbrelExportError(NimbrelExportError::AccessDenied{}));
    add(texts, NimbrelExportError(NimbrelExportError::SnapshotUnreadable{}));
    add(texts, NoHomeFolder());
    add(texts, std::runtime_error("any other"));
    for (const char* text : {archiveTooLarge, wordlessRefusal}) add(texts, text);
    add(texts, std::string(unexpectedProblem) + "any other.");
}

void addScreens(Texts& texts)
{
    add(texts, linkText(phase::Rejected{}).status.text);
    add(texts, accessText(FullDiskAccessStatus::noDatabase).status.text);
    add(texts, accessText(FullDiskAccessStatus::denied));
    for (const ScanPhase& phase :
         {ScanPhase(phase::Unavailable{}), ScanPhase(phase::NotConfigured{}), ScanPhase(phase::NotFound{})})
        add(texts, findText(phase, std::nullopt));
    add(texts, keychainText(phase::Waiting{}, std::nullopt));
    for (const auto status : {KeychainError::userCanceled, KeychainError::authFailed})
        add(texts, keychainText(phase::Refused{}, KeychainError(status)));
}

/// The page with everything, and the same in a terminal.
void addEverything(Texts& texts)
{
    NimbrelExportResult result;
    result.chats.push_back({.rowID = 1, .guid = "chat", .handle = "nimbrel@example.com", .service = {}});
    add(texts, leftOutNote(result.skipped));
    for (const char* reason : {"reaction", "unsent", "system", "empty", "undated"}) result.skipped.counts[reason] = 2;
    add(texts, leftOutNote(result.skipped));
    for (const LeftOutRow& row : leftOutRows(result.skipped)) add(texts, row.reason);
    for (const std::string& text : besideTexts(result)) add(texts, text);
    add(texts, listedText(2, 3, true));
    add(texts, nothingFoundText("words"));
    add(texts, copyText(phase::Saved{"chat.zip"}).text);
}

void addReviews(Texts& texts)
{
    for (const char* key : {"", "media_unreadable", "wrong_provider", "duplicate_media", "export_too_small",
                            "nothing_new_since_last", "authenticity_suspected"})
        add(texts, RejectionCopy::text(key));
    UploadOutcome outcome;
    outcome.submission.status = "expired";
    add(texts, doneText(outcome));
    add(texts, longReviewText());
    QuestWire quest;
    for (const char* status : {"submitted", "rejected", "approved"}) {
        quest.status = status;
        quest.availableAt = "2026-03-01T09:15:00Z";
        add(texts, availabilityNote(QuestAvailability(quest, Instant{})).text);
    }
}

void addCommands(Texts& texts)
{
    for (const auto status : {KeychainError::notAvailable, KeychainError::interactionNotAllowed,
                              KeychainError::userCanceled, KeychainError::authFailed})
        add(texts, SessionKeychain::failure(KeychainError(status), "And so on.").text());
    for (const auto file : {preflight::DatabaseFile::missing, preflight::DatabaseFile::noDatabase})
        add(texts, preflight::textOf(file, "/chat.db"));
    const std::error_code full(ENOSPC, std::generic_category());
    const std::filesystem::filesystem_error failure("", full);
    add(texts, failureOfReading(failure).text);
    add(texts, failureOfWriting(failure, "out.zip").text);
    add(texts, failureOfReading(NimbrelExportError(NimbrelExportError::AccessDenied{})).text);
    NimbrelExportResult empty;
    add(texts, failureOfFinding(empty)->text);
    empty.chats.emplace_back();
    add(texts, failureOfFinding(empty)->text);
}

} // namespace

std::vector<std::string> problemTexts()
{
    Texts texts;
    addErrors(texts);
    addScreens(texts);
    addEverything(texts);
    addReviews(texts);
    addCommands(texts);
    return texts;
}

} // namespace vorn::testing
