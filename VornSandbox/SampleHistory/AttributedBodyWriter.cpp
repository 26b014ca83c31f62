#include "VornSandbox/SampleHistory/AttributedBodyWriter.h"

#include "VornSandbox/SampleHistory/TypedStreamWriter.h"

#include <array>

namespace vorn {
namespace {

constexpr TypedStreamClass root{"NSObject", 0};
constexpr std::array immutableBody{TypedStreamClass{"NSAttributedString", 0}, root};
constexpr std::array mutableBody{TypedStreamClass{"NSMutableAttributedString", 0}, immutableBody[0], root};
constexpr std::array immutableString{TypedStreamClass{"NSString", 1}, root};
constexpr std::array mutableString{TypedStreamClass{"NSMutableString", 1}, immutableString[0], root};
constexpr std::array dictionary{TypedStreamClass{"NSDictionary", 0}, root};
constexpr std::array number{TypedStreamClass{"NSNumber", 0}, TypedStreamClass{"NSValue", 0}, root};
constexpr std::array url{TypedStreamClass{"NSURL", 0}, root};
constexpr std::array data{TypedStreamClass{"NSData", 0}, root};

using Hierarchy = std::span<const TypedStreamClass>;

void writeString(TypedStreamWriter& stream, Hierarchy hierarchy, std::string_view text)
{
    stream.beginObject(hierarchy);
    stream.type("+");
    stream.bytes(text);
    stream.endObject();
}

/// Writes the object that an attribute holds.
struct ValueWriter {
    TypedStreamWriter& stream;

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

void writeAttributes(TypedStreamWriter& stream, std::span<const TextAttribute> attributes)
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

void writeRuns(TypedStreamWriter& stream, std::span<const AttributeRun> runs)
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
    TypedStreamWriter stream;
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
