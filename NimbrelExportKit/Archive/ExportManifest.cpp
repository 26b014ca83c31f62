#include "NimbrelExportKit/Archive/ExportManifest.h"

#include <utility>

namespace vorn {

ExporterInfo ExporterInfo::current(const Bundle& bundle)
{
    return current(bundle, systemVersion());
}

ExporterInfo ExporterInfo::current(const Bundle& bundle, const SystemVersion& system)
{
    return {bundle.version(), systemText(system)};
}

ExportManifest::ExportManifest(const NimbrelExportResult& result, ExporterInfo theExporter, Instant time)
    : exportedAt(internetDateTime(time)), exporter(std::move(theExporter)), agentHandles(result.agentHandles()),
      chatCount(static_cast<std::int64_t>(result.chats.size())),
      messageCount(static_cast<std::int64_t>(result.messages.size())), skipped(result.skipped)
{
}

} // namespace vorn
