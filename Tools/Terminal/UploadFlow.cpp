#include "Tools/Terminal/UploadFlow.h"

#include "Platform/Base/FileManager.h"
#include "Platform/Base/SHA256.h"
#include "Tools/Terminal/PrintableText.h"
#include "Tools/Terminal/QuestWords.h"
#include "VornMacCore/Identity/DeviceIdentity.h"
#include "VornMacCore/Quest/QuestAvailability.h"

#include <utility>

namespace vorn {
namespace {

constexpr const char* termsVersion = "vorn-mac-nimbrel-1";

CommandFailure unreadable(const std::filesystem::path& archive, const std::string& why)
{
    return {TerminalStatus::archiveUnreadable, "Vorn couldn't read " + printable(archive.string()) + ": " + why + "."};
}

} // namespace

ArchiveFacts factsOf(const std::filesystem::path& archive, const CancelFlag& cancel)
{
    // A folder has a size too, and a pipe can be read only once.
    const auto status = std::filesystem::status(archive);
    if (std::filesystem::is_directory(status)) throw unreadable(archive, "it is a folder, not an archive");
    if (std::filesystem::is_other(status)) throw unreadable(archive, "it is not a file on a disk");
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
