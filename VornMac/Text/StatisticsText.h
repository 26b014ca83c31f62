#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// Texts for an export in numbers. Threads: any.
namespace vorn {

/// `count` in English notation: "1,204".
std::string countText(std::int64_t count);

/// One line of the chat in numbers. A value.
struct StatisticsRow {
    std::string label;
    std::string value;
    bool operator==(const StatisticsRow&) const = default;
};

/// The rows of the chat in numbers; without dates there is no row for them.
std::vector<StatisticsRow> statisticsRows(const NimbrelExportStats& stats);

/// The first and the last day in the user's zone: "Dec 31, 2025 – Mar 1, 2026". Empty if either is missing.
std::string datesText(const NimbrelExportStats& stats);

} // namespace vorn
