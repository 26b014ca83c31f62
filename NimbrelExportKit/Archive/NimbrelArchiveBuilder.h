#pragma once

#include "NimbrelExportKit/Archive/ExportManifest.h"
#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/Bytes.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/Dates.h"
#include "Platform/Base/FileManager.h"

#include <cstdint>
#include <filesystem>

namespace vorn {

/// A written archive.
struct ArchiveFile {
    std::filesystem::path url;
    std::int64_t sizeBytes = 0; ///< as the file system reports it
    bool operator==(const ArchiveFile&) const = default;
};

/// Packs the result of an export for the upload: a ZIP archive of a manifest and the messages, both JSON (UTF-8).
/// Threads: any but the main one: large results take seconds.
namespace NimbrelArchiveBuilder {

ByteBuffer manifestJSON(const NimbrelExportResult& result, const ExporterInfo& exporter, Instant exportedAt);
ByteBuffer messagesJSON(const NimbrelExportResult& result);

/// Writes the archive to `to`, replacing what is there. The caller removes the file, even when reading its size fails;
/// an earlier failure leaves no new file. Errors: `ZipWriterError`, those of `files`, and `Cancelled` once `cancel` is
/// raised: the compression in progress is finished first, and nothing is written after that.
ArchiveFile writeArchive(const NimbrelExportResult& result, const ExporterInfo& exporter,
                         const std::filesystem::path& to, Instant exportedAt,
                         FileManager& files = FileManager::standard(), const CancelFlag& cancel = CancelFlag::never());

} // namespace NimbrelArchiveBuilder
} // namespace vorn
