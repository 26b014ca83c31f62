#pragma once

#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/Clock.h"
#include "Tools/Terminal/CommandFailure.h"
#include "VornMacCore/Client/VornAPI.h"
#include "VornMacCore/Upload/MultipartUploader.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace vorn {

/// An archive as it lies on the disk.
struct ArchiveFacts {
    std::int64_t sizeBytes = 0;
    std::string sha256; ///< 64 hexadecimal digits
    bool operator==(const ArchiveFacts&) const = default;
};

/// Reads the whole file. Throws `std::filesystem::filesystem_error`, `CommandFailure` for what is no file, and
/// `Cancelled`.
ArchiveFacts factsOf(const std::filesystem::path& archive, const CancelFlag& cancel);

/// Why the quest takes no archive of that size at the time `now`; nothing when it does.
std::optional<CommandFailure> refusalOf(const NimbrelState& quest, std::int64_t sizeBytes, Instant now);

/// What an upload needs; all that is pointed to must outlive it.
struct UploadServices {
    VornAPI api; ///< pinned to the user whose archive it is
    std::shared_ptr<HTTPSession> transfer;
    BackgroundPool* pool = nullptr;
};

/// Sends the archive and gives its submission's status. Throws what `MultipartUploader` throws.
Async<SubmissionStatus> uploadArchive(UploadServices services, std::filesystem::path archive,
                                      MultipartUploader::Progress progress);

} // namespace vorn
