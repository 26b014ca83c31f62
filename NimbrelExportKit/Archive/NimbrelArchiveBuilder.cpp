#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"

#include "NimbrelExportKit/Archive/ExportJSON.h"
#include "NimbrelExportKit/Archive/ZipWriter.h"

#include <array>

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
    const std::array entries{ZipEntry{"vorn-nimbrel-export.json", manifest, exportedAt},
                             ZipEntry{"vorn-nimbrel-messages.json", messages, exportedAt}};
    ZipWriter::write(entries, to, files, cancel);
    return {to, files.fileSize(to)};
}

} // namespace vorn
