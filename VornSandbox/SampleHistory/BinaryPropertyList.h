#pragma once

#include "Platform/Base/Bytes.h"

#include <nlohmann/json.hpp>

namespace vorn {

/// A value of a property list. A dictionary keeps the order of its entries.
using PropertyList = nlohmann::ordered_json;

PropertyList dataOf(ByteView bytes);

/// The binary form ("bplist00") in which Messages keeps a message's summary and the content of balloons. `root` holds
/// objects, arrays, flags, integers, data and texts in well-formed UTF-8; nothing is shared between equal values.
/// Threads: any.
ByteBuffer binaryPropertyList(const PropertyList& root);

} // namespace vorn
