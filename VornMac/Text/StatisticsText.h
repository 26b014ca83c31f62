#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"

#include <cstdint>
#include <string>
#include <vector>

/// An export in numbers, as users read them. Threads: any.
namespace vorn {

/// `count` as English writes it, with its thousands apart: "1,204".
std::string countText(std::int64_t count);

/// One line of the chat in numbers. A value.
struct StatisticsRow {
    std::string label;
    std::string value;
    bool operator==(const StatisticsRow&) const = default;
};

/// The chat in numbers; without dates there is no row for them.
std::vector<StatisticsRow> statisticsRows(const NimbrelExportStats& stats);

/// The first and the last day, those of the user's zone: "Dec 31, 2025 – Mar 1, 2026". Empty when either is missing.
std::string datesText(const NimbrelExportStats& stats);

} // namespace vorn
