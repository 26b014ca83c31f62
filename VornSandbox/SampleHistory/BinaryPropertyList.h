#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace vorn {

struct PropertyListEntry;

/// A value of a property list. A dictionary keeps the order of its entries.
struct PropertyListValue {
    using Array = std::vector<PropertyListValue>;
    using Dictionary = std::vector<PropertyListEntry>;

    std::variant<bool, std::int64_t, std::string, ByteBuffer, Array, Dictionary> content;
};

struct PropertyListEntry {
    std::string key;
    PropertyListValue value;
};

/// The binary form ("bplist00") in which Messages keeps a message's summary and the content of balloons. Texts are
/// well-formed UTF-8; nothing is shared between equal values. Threads: any.
ByteBuffer binaryPropertyList(const PropertyListValue& root);

} // namespace vorn
