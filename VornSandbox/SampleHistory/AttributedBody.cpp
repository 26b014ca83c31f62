#include "VornSandbox/SampleHistory/AttributedBody.h"

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

namespace vorn {
namespace {

/// A class as a typed stream names it, with the version of its layout.
struct Class {
    std::string_view name;
    int version = 0;
};

using Hierarchy = std::span<const Class>; ///< a class and those above it, the root last

constexpr std::uint8_t int16Follows = 0x81;
constexpr std::uint8_t int32Follows = 0x82;
constexpr std::uint8_t newEntry = 0x84;
constexpr std::uint8_t nilEntry = 0x85;
constexpr std::uint8_t endOfObject = 0x86;
constexpr std::int64_t firstLabel = -110; // also the smallest integer of one byte: those below are the tags above

/// A typed stream (version 4, little-endian), the archive in which Messages keeps attributed strings: values that are
/// preceded by their type's encoding, where every class, type and C string is spelled out once and afterwards named by
/// a label. Labels count from -110 in two tables, one of strings and one of objects.
class TypedStream {
public:
    TypedStream()
    {
        buffer_.reserve(512);
        put(4);
        bytes("streamtyped");
        integer(1000);
    }

    void beginObject(Hierarchy hierarchy)
    {
        type("@");
        put(newEntry);
        objects_.emplace_back();
        classes(hierarchy);
    }
    void endObject() { put(endOfObject); }

    /// Announces values of these types: "i", "iI", "+", "*", … The values follow.
    void type(std::string_view encoding) { sharedString(encoding); }

    /// A value of an integral type wider than a char: one byte where it fits, else 0x81 or 0x82 and 2 or 4 bytes.
    void integer(std::int64_t value)
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

    /// A value of type "c".
    void character(std::uint8_t value) { put(value); }

    /// A value of type "+": its length and its bytes.
    void bytes(std::string_view value)
    {
        integer(static_cast<std::int64_t>(value.size()));
        append(value);
    }

    /// A value of type "*".
    void cString(std::string_view value)
    {
        if (!isKnown(objects_, "*", value)) sharedString(value);
    }

    /// Type and value of an array of chars, such as the content of a data object.
    void characterArray(ByteView value)
    {
        type("[" + std::to_string(value.size()) + "c]");
        append(textOf(value));
    }

    /// The stream so far. The object is spent.
    ByteBuffer take() { return std::move(buffer_); }

private:
    using Table = std::vector<std::string>;

    /// Writes the label of a text that the table has, and returns true. Otherwise announces a new entry, which the
    /// caller spells out.
    bool isKnown(Table& table, std::string_view prefix, std::string_view text)
    {
        const auto matches = [&](const std::string& entry) {
            return entry.size() == prefix.size() + text.size() && entry.starts_with(prefix) && entry.ends_with(text);
        };
        const auto found = std::ranges::find_if(table, matches);
        if (found != table.end()) {
            integer(firstLabel + (found - table.begin()));
            return true;
        }
        put(newEntry);
        table.push_back(std::string(prefix).append(text));
        return false;
    }

    void put(std::uint8_t value) { buffer_.push_back(static_cast<std::byte>(value)); }
    void append(std::string_view text)
    {
        const ByteView view = bytesOf(text);
        buffer_.insert(buffer_.end(), view.begin(), view.end());
    }
    void sharedString(std::string_view text)
    {
        if (!isKnown(strings_, "", text)) bytes(text);
    }
    void classes(Hierarchy hierarchy)
    {
        for (const auto& [name, version] : hierarchy) {
            if (isKnown(objects_, "#", name)) return; // the classes above it are known with it
            sharedString(name);
            integer(version);
        }
        put(nilEntry);
    }

    ByteBuffer buffer_;
    Table strings_;
    Table objects_; ///< classes as "#name", C strings as "*text"; empty for plain objects
};

constexpr Class root{"NSObject", 0};
constexpr std::array immutableBody{Class{"NSAttributedString", 0}, root};
constexpr std::array mutableBody{Class{"NSMutableAttributedString", 0}, immutableBody[0], root};
constexpr std::array immutableString{Class{"NSString", 1}, root};
constexpr std::array mutableString{Class{"NSMutableString", 1}, immutableString[0], root};
constexpr std::array dictionary{Class{"NSDictionary", 0}, root};
constexpr std::array number{Class{"NSNumber", 0}, Class{"NSValue", 0}, root};
constexpr std::array url{Class{"NSURL", 0}, root};
constexpr std::array data{Class{"NSData", 0}, root};

void writeString(TypedStream& stream, Hierarchy hierarchy, std::string_view text)
{
    stream.beginObject(hierarchy);
    stream.type("+");
    stream.bytes(text);
    stream.endObject();
}

/// Writes the object that an attribute holds.
struct ValueWriter {
    TypedStream& stream;

    void operator()(std::int64_t value) const
    {
        const std::string_view encoding = value < 0 ? "q" : "i";
        stream.beginObject(number);
        stream.type("*");
        stream.cString(encoding);
        stream.type(encoding);
        stream.integer(value);
        stream.endObject();
    }
    void operator()(const std::string& text) const { writeString(stream, immutableString, text); }
    void operator()(const AttributeURL& link) const
    {
        stream.beginObject(url);
        stream.type("c");
        stream.character(0); // no base URL follows
        writeString(stream, immutableString, link.absolute);
        stream.endObject();
    }
    void operator()(const ByteBuffer& content) const
    {
        stream.beginObject(data);
        stream.type("i");
        stream.integer(static_cast<std::int64_t>(content.size()));
        stream.characterArray(content);
        stream.endObject();
    }
};

void writeAttributes(TypedStream& stream, std::span<const TextAttribute> attributes)
{
    stream.beginObject(dictionary);
    stream.type("i");
    stream.integer(static_cast<std::int64_t>(attributes.size()));
    for (const auto& [name, value] : attributes) {
        writeString(stream, immutableString, name);
        std::visit(ValueWriter{stream}, value);
    }
    stream.endObject();
}

void writeRuns(TypedStream& stream, std::span<const AttributeRun> runs)
{
    std::int64_t index = 0;
    for (const auto& [length, attributes] : runs) {
        stream.type("iI");
        stream.integer(++index);
        stream.integer(static_cast<std::int64_t>(length));
        writeAttributes(stream, attributes);
    }
}

} // namespace

ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind, std::span<const AttributeRun> runs)
{
    const bool isMutable = kind != AttributedBodyKind::immutableText;
    TypedStream stream;
    stream.beginObject(isMutable ? Hierarchy(mutableBody) : Hierarchy(immutableBody));
    const bool isMutableText = kind == AttributedBodyKind::mutableText;
    writeString(stream, isMutableText ? Hierarchy(mutableString) : Hierarchy(immutableString), text);
    writeRuns(stream, runs);
    stream.endObject();
    return stream.take();
}

ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind)
{
    if (text.empty()) return attributedBody(text, kind, {});
    const AttributeRun part{utf16Length(text), {{"__kIMMessagePartAttributeName", std::int64_t{0}}}};
    return attributedBody(text, kind, std::span(&part, 1));
}

std::size_t utf16Length(std::string_view text) noexcept
{
    // A scalar has one byte that is no continuation; those of four bytes, led by F0 to F4, need a pair of units.
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        units += ((byte & 0xC0U) != 0x80U ? 1U : 0U) + (byte >= 0xF0U ? 1U : 0U);
    }
    return units;
}

} // namespace vorn
