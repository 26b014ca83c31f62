#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"

#include "NimbrelExportKit/Archive/ExportJSON.h"
#include "NimbrelExportKit/Archive/ZipWriter.h"

#include <array>
#include <string>

namespace vorn {

ByteBuffer NimbrelArchiveBuilder::manifestJSON(const NimbrelExportResult& result, const ExporterInfo& exporter,
                                               Instant exportedAt)
{
    return exportJSON(ExportManifest(result, exporter, exportedAt));
}

ByteBuffer NimbrelArchiveBuilder::messagesJSON(const NimbrelExportResult& result)
{
    return exportJSON(result.messages);
}

ArchiveFile NimbrelArchiveBuilder::writeArchive(const NimbrelExportResult& result, const ExporterInfo& exporter,
                                                const std::filesystem::path& to, Instant exportedAt, FileManager& files,
                                                const CancelFlag& cancel)
{
    const ByteBuffer manifest = manifestJSON(result, exporter, exportedAt);
    const ByteBuffer messages = messagesJSON(result);
    cancel.check();
    const std::array entries{ZipEntry{std::string(manifestEntryName), manifest, exportedAt},
                             ZipEntry{std::string(messagesEntryName), messages, exportedAt}};
    ZipWriter::write(entries, to, files, cancel);
    return {to, files.fileSize(to)};
}

} // namespace vorn
