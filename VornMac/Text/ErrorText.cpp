#include "VornMac/Text/ErrorText.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "NimbrelExportKit/Messages/UsersDatabase.h"
#include "Platform/Base/Match.h"
#include "Platform/HTTP/URLError.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/UploadError.h"

#include <filesystem>
#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

std::string unknownProblem()
{
    return std::string(somethingWrong) + ".";
}

/// A transfer without an answer: what is wrong, and whether the window says that it tries again.
struct Unanswered {
    std::string problem;
    bool isRetried = false;
};

Unanswered unanswered(const URLError& error)
{
    switch (error.code()) {
    case URLError::Code::notConnectedToInternet:
    case URLError::Code::networkConnectionLost: return {"You're offline.", true};
    case URLError::Code::timedOut: return {"The connection timed out.", true};
    default: return {"Vorn can't reach the server right now."};
    }
}

ErrorText textOf(const Unanswered& transfer)
{
    if (!transfer.isRetried) return {transfer.problem};
    return {transfer.problem + " Vorn will retry.", transfer.problem + runAgain};
}

std::string textOf(const APIError::Reason& reason)
{
    const Match text{
        [](const APIError::HTTP& http) -> std::string {
            // Our text even if the service sends one: that would name a route, not the feature.
            if (APIError(http).isLaneOff()) return questUnavailable;
            return http.message.value_or(fmt::format("The server answered {}.", http.status));
        },
        [](APIError::NotSignedIn) -> std::string { return unlinked; },
        [](APIError::SessionExpired) -> std::string { return unlinked; },
        [](APIError::SessionChanged) -> std::string { return "You signed in again, so this step was stopped."; },
        [](APIError::InvalidResponse) -> std::string { return "The server sent an answer Vorn could not read."; },
    };
    return std::visit(text, reason);
}

std::string textOf(const UploadError::Reason& reason)
{
    const Match text{
        [](const UploadError::PartRefused& refused) {
            return fmt::format("Part {} of the upload failed ({}).", refused.part, refused.status);
        },
        [](const UploadError::MissingETag& missing) {
            return fmt::format("Part {} of the upload was not acknowledged.", missing.part);
        },
        [](UploadError::NoAsset) -> std::string { return "The server opened no upload for the archive."; },
    };
    return std::visit(text, reason);
}

std::string textOf(const NimbrelExportError::Reason& reason)
{
    const Match text{
        [](const NimbrelExportError::Database&) -> std::string { return "Vorn couldn't read your Messages history."; },
        [](NimbrelExportError::NoDatabase) -> std::string { return noMessages; },
        [](NimbrelExportError::AccessDenied) { return unknownProblem(); }, // the user is led to grant access instead
        [](NimbrelExportError::SnapshotUnreadable) -> std::string {
            return "Messages was busy. Try again in a moment.";
        },
    };
    return std::visit(text, reason);
}

} // namespace

ErrorText errorText(const std::exception& error)
{
    if (const auto* transfer = dynamic_cast<const URLError*>(&error)) return textOf(unanswered(*transfer));
    if (const auto* api = dynamic_cast<const APIError*>(&error)) return {textOf(api->reason())};
    if (const auto* upload = dynamic_cast<const UploadError*>(&error)) return {textOf(upload->reason())};
    if (const auto* exported = dynamic_cast<const NimbrelExportError*>(&error)) return {textOf(exported->reason())};
    if (dynamic_cast<const NoHomeFolder*>(&error) != nullptr)
        return {"This user has no home folder, so there is no Messages history here. HOME can name one."};
    return {unknownProblem()};
}

std::string systemReason(const std::exception& error)
{
    const auto* failure = dynamic_cast<const std::filesystem::filesystem_error*>(&error);
    return failure != nullptr ? failure->code().message() : error.what();
}

std::string archiveNotWritten(const std::string& path, const std::exception& error)
{
    return fmt::format("Vorn couldn't write the archive to {}: {}.", path, systemReason(error));
}

std::string commandText(const std::exception& error)
{
    const auto* transfer = dynamic_cast<const URLError*>(&error);
    return transfer != nullptr ? unanswered(*transfer).problem + runAgain : errorText(error).lastWords;
}

} // namespace vorn
