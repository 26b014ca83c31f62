#include "NimbrelExportKit/Archive/ExportManifest.h"

#include <utility>

#include <fmt/format.h>

namespace vorn {
namespace {

std::string osText(const SystemVersion& system)
{
    std::string text = fmt::format("macOS {}.{}", system.major, system.minor);
    if (system.patch > 0) text += fmt::format(".{}", system.patch);
    return text;
}

} // namespace

ExporterInfo ExporterInfo::current(const Bundle& bundle)
{
    return current(bundle, systemVersion());
}

ExporterInfo ExporterInfo::current(const Bundle& bundle, const SystemVersion& system)
{
    return {bundle.text("CFBundleShortVersionString").value_or("1.0.0"), osText(system)};
}

ExportManifest::ExportManifest(const NimbrelExportResult& result, ExporterInfo theExporter, Instant time)
    : exportedAt(internetDateTime(time)), exporter(std::move(theExporter)), agentHandles(result.agentHandles()),
      chatCount(static_cast<std::int64_t>(result.chats.size())),
      messageCount(static_cast<std::int64_t>(result.messages.size())), skipped(result.skipped)
{
}

} // namespace vorn
