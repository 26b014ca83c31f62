#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// Texts for the statistics of an export. Threads: any.
namespace vorn {

/// `count` in English notation: "1,204".
std::string countText(std::int64_t count);

/// One row of the chat's statistics. A value.
struct StatisticsRow {
    std::string label;
    std::string value;
    bool operator==(const StatisticsRow&) const = default;
};

/// The rows of the chat's statistics; without dates, the row for them is missing.
std::vector<StatisticsRow> statisticsRows(const NimbrelExportStats& stats);

/// The first and the last day in the user's time zone: "Dec 31, 2025 – Mar 1, 2026". Empty if either is missing.
std::string datesText(const NimbrelExportStats& stats);

} // namespace vorn
