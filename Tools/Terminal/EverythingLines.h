#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/Dates.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

/// All that would be uploaded, as a terminal lists it. Control characters are replaced. Threads: any, one at a time.
namespace vorn {

/// Takes a part of the text; returns false once no more is wanted.
using TextSink = std::function<bool(std::string_view)>;

/// Passes the chat in numbers, what is left out, and every message to `sink`, part by part.
void listEverything(const NimbrelExportResult& result, const NimbrelExportStats& stats, const TextSink& sink);

/// Passes the messages that contain `words` to `sink`. Returns how many were passed.
std::size_t listFound(const NimbrelExportResult& result, const std::string& words, const TextSink& sink);

} // namespace vorn
