#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// A class as a typed stream names it, with the version of its layout.
struct TypedStreamClass {
    std::string_view name;
    int version = 0;
};

/// Writes a typed stream (version 4, little-endian), the archive in which Messages keeps attributed strings: values
/// that are preceded by their type's encoding, where every class, type and C string is spelled out once and afterwards
/// named by a label. Labels count from -110 in two tables, one of strings and one of objects.
/// Threads: one at a time.
class TypedStreamWriter {
public:
    TypedStreamWriter();

    /// Begins an object. `hierarchy` is its class and the classes above it, the root class last.
    void beginObject(std::span<const TypedStreamClass> hierarchy);
    void endObject();

    /// Announces values of these types: "i", "iI", "+", "*", … The values follow.
    void type(std::string_view encoding);

    /// A value of an integral type wider than a char: one byte where it fits, else 0x81 or 0x82 and 2 or 4 bytes.
    void integer(std::int64_t value);

    /// A value of type "c".
    void character(std::uint8_t value);

    /// A value of type "+": its length and its bytes.
    void bytes(std::string_view value);

    /// A value of type "*".
    void cString(std::string_view value);

    /// Type and value of an array of chars, such as the content of a data object.
    void characterArray(ByteView value);

    /// The stream so far. The writer is spent.
    ByteBuffer take() { return std::move(buffer_); }

private:
    void put(std::uint8_t value) { buffer_.push_back(static_cast<std::byte>(value)); }
    void append(std::string_view text);
    void label(std::size_t index);
    void sharedString(std::string_view text);
    void classes(std::span<const TypedStreamClass> hierarchy);

    ByteBuffer buffer_;
    std::vector<std::string> strings_;
    std::vector<std::string> objects_; ///< classes as "#name", C strings as "*text"; empty for plain objects
};

} // namespace vorn
