#pragma once

#include "NimbrelExportKit/Records/ExportRecords.h"

#include <cstdint>
#include <string>

/// An export in numbers, as users read them. Threads: any.
namespace vorn {

/// `count` as English writes it, with its thousands apart: "1,204".
std::string countText(std::int64_t count);

/// The first and the last day, those of the user's zone: "Dec 31, 2025 – Mar 1, 2026". Empty when either is missing.
std::string datesText(const NimbrelExportStats& stats);

} // namespace vorn
