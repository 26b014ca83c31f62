#include "VornSandbox/SampleHistory/TypedStreamWriter.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace vorn {
namespace {

constexpr std::uint8_t int16Follows = 0x81;
constexpr std::uint8_t int32Follows = 0x82;
constexpr std::uint8_t newEntry = 0x84;
constexpr std::uint8_t nilEntry = 0x85;
constexpr std::uint8_t endOfObject = 0x86;
constexpr std::int64_t firstLabel = -110; // also the smallest integer of one byte: those below are the tags above

std::size_t indexOf(const std::vector<std::string>& table, std::string_view prefix, std::string_view text)
{
    const auto matches = [&](const std::string& entry) {
        return entry.size() == prefix.size() + text.size() && entry.starts_with(prefix) && entry.ends_with(text);
    };
    return static_cast<std::size_t>(std::ranges::find_if(table, matches) - table.begin());
}

} // namespace

TypedStreamWriter::TypedStreamWriter()
{
    buffer_.reserve(512);
    put(4);
    bytes("streamtyped");
    integer(1000);
}

void TypedStreamWriter::beginObject(std::span<const TypedStreamClass> hierarchy)
{
    type("@");
    put(newEntry);
    objects_.emplace_back();
    classes(hierarchy);
}

void TypedStreamWriter::endObject()
{
    put(endOfObject);
}

void TypedStreamWriter::classes(std::span<const TypedStreamClass> hierarchy)
{
    for (const auto& [name, version] : hierarchy) {
        const std::size_t known = indexOf(objects_, "#", name);
        if (known < objects_.size()) return label(known); // the classes above it are known with it
        put(newEntry);
        sharedString(name);
        integer(version);
        objects_.push_back("#" + std::string(name));
    }
    put(nilEntry);
}

void TypedStreamWriter::type(std::string_view encoding)
{
    sharedString(encoding);
}

void TypedStreamWriter::integer(std::int64_t value)
{
    using Short = std::numeric_limits<std::int16_t>;
    if (value >= firstLabel && value <= 127) return put(static_cast<std::uint8_t>(value));
    if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::uint32_t>::max()) {
        throw std::out_of_range("a typed stream holds integers of up to 32 bits");
    }
    const bool isShort = value >= Short::min() && value <= Short::max();
    put(isShort ? int16Follows : int32Follows);
    for (int shift = 0; shift < (isShort ? 16 : 32); shift += 8) put(static_cast<std::uint8_t>(value >> shift));
}

void TypedStreamWriter::character(std::uint8_t value)
{
    put(value);
}

void TypedStreamWriter::bytes(std::string_view value)
{
    integer(static_cast<std::int64_t>(value.size()));
    append(value);
}

void TypedStreamWriter::cString(std::string_view value)
{
    const std::size_t known = indexOf(objects_, "*", value);
    if (known < objects_.size()) return label(known);
    put(newEntry);
    objects_.push_back("*" + std::string(value));
    sharedString(value);
}

void TypedStreamWriter::characterArray(ByteView value)
{
    type("[" + std::to_string(value.size()) + "c]");
    append(textOf(value));
}

void TypedStreamWriter::append(std::string_view text)
{
    const ByteView view = bytesOf(text);
    buffer_.insert(buffer_.end(), view.begin(), view.end());
}

void TypedStreamWriter::label(std::size_t index)
{
    integer(firstLabel + static_cast<std::int64_t>(index));
}

void TypedStreamWriter::sharedString(std::string_view text)
{
    const std::size_t known = indexOf(strings_, "", text);
    if (known < strings_.size()) return label(known);
    put(newEntry);
    bytes(text);
    strings_.emplace_back(text);
}

} // namespace vorn
