#include "Tools/Terminal/UploadFlow.h"

#include "Platform/Base/FileManager.h"
#include "Platform/Base/SHA256.h"
#include "Tools/Terminal/QuestWords.h"
#include "VornMacCore/Identity/DeviceIdentity.h"
#include "VornMacCore/Quest/QuestAvailability.h"

#include <utility>

namespace vorn {
namespace {

constexpr const char* termsVersion = "vorn-mac-nimbrel-1";

} // namespace

ArchiveFacts factsOf(const std::filesystem::path& archive, const CancelFlag& cancel)
{
    // A folder has a size too, and a pipe can be read only once.
    if (std::filesystem::exists(archive) && !std::filesystem::is_regular_file(archive)) {
        throw std::filesystem::filesystem_error("not a file", archive,
                                                std::make_error_code(std::errc::invalid_argument));
    }
    return {FileManager::standard().fileSize(archive), SHA256::hexDigestOfFile(archive, &cancel)};
}

std::optional<CommandFailure> refusalOf(const NimbrelState& quest, std::int64_t sizeBytes, Instant now)
{
    const QuestAvailability availability(quest.quest, now);
    if (!availability.canUpload()) return CommandFailure(TerminalStatus::notNow, availabilityText(availability));
    if (quest.maxBytes < sizeBytes)
        return CommandFailure(TerminalStatus::tooLarge, "Your chat is larger than the upload limit.");
    return std::nullopt;
}

Async<SubmissionStatus> uploadArchive(UploadServices services, std::filesystem::path archive,
                                      MultipartUploader::Progress progress)
{
    const MultipartUploader uploader(std::move(services.api), std::move(services.transfer), *services.pool);
    co_return co_await uploader.upload(std::move(archive), termsVersion, currentDeviceSignals(), std::move(progress));
}

} // namespace vorn
