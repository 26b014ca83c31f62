#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/Bundle.h"
#include "Platform/Base/Dates.h"
#include "Platform/Base/SystemFacts.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// The program that made an export.
struct ExporterInfo {
    static constexpr std::string_view app = "Vorn for Mac";
    std::string version; ///< the application's
    std::string os;      ///< as `systemText` writes it

    /// Describes the program of `bundle` on the running system.
    static ExporterInfo current(const Bundle& bundle);
    static ExporterInfo current(const Bundle& bundle, const SystemVersion& system);

    bool operator==(const ExporterInfo&) const = default;
};

/// An archive's description of itself.
struct ExportManifest {
    static constexpr std::string_view format = "vorn.nimbrel-imessage";
    static constexpr std::int64_t formatVersion = 1;
    std::string exportedAt; ///< UTC, whole seconds: "2026-03-01T09:15:00Z"
    ExporterInfo exporter;
    std::vector<std::string> agentHandles;
    std::int64_t chatCount = 0;
    std::int64_t messageCount = 0;
    SkipTally skipped;

    ExportManifest(const NimbrelExportResult& result, ExporterInfo exporter, Instant exportedAt);

    bool operator==(const ExportManifest&) const = default;
};

} // namespace vorn
