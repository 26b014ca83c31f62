#include "Tools/Export/ExportFailure.h"

#include "NimbrelExportKit/Messages/NimbrelExportError.h"
#include "VornMac/Text/AccessText.h"
#include "VornMac/Text/ErrorText.h"

#include <fmt/format.h>

namespace vorn {
std::optional<ExportFailure> failureOfFinding(const NimbrelExportResult& result)
{
    if (!result.messages.empty()) return std::nullopt;
    const char* what = result.chats.empty() ? "There is no one-to-one conversation with these handles."
                                            : "The conversation holds no message that is exported.";
    return ExportFailure{ExportStatus::nothingFound,
                         fmt::format("{} Nothing was written; --allow-empty writes an archive anyway.", what)};
}

ExportFailure failureOfReading(const std::exception& error)
{
    const auto* failure = dynamic_cast<const NimbrelExportError*>(&error);
    if (failure == nullptr && dynamic_cast<const std::filesystem::filesystem_error*>(&error) == nullptr) {
        return {ExportStatus::failed, fmt::format("{}{}.", unexpectedProblem, error.what())};
    }
    if (failure == nullptr) {
        return {ExportStatus::copyFailed,
                fmt::format("Vorn couldn't make its private copy of your Messages history: {}.", systemReason(error))};
    }
    if (failure->is<NimbrelExportError::NoDatabase>()) return {ExportStatus::noDatabase, errorText(*failure).text};
    if (failure->is<NimbrelExportError::AccessDenied>()) return {ExportStatus::accessDenied, accessRefused()};
    if (failure->is<NimbrelExportError::SnapshotUnreadable>())
        return {ExportStatus::unreadable, errorText(*failure).text};
    return {ExportStatus::databaseError, fmt::format("{}\n{}", errorText(*failure).text, failure->what())};
}

ExportFailure failureOfWriting(const std::exception& error, const std::filesystem::path& output)
{
    return {ExportStatus::outputNotWritable, archiveNotWritten(output.string(), error)};
}

} // namespace vorn
