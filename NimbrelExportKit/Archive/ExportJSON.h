#pragma once

#include "NimbrelExportKit/Archive/ExportManifest.h"
#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "Platform/Base/Bytes.h"

#include <span>

/// The archive's two documents as JSON: keys sorted at every level, compact, nothing escaped that need not be, absent
/// values as null. Memory: one allocation of the document's size. Threads: any.
namespace vorn {

ByteBuffer exportJSON(const ExportManifest& manifest);

/// A JSON array of the messages in the given order, without their `rowID`.
ByteBuffer exportJSON(std::span<const ExportedMessage> messages);

} // namespace vorn
