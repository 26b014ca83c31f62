#include "NimbrelExportKit/Messages/AttributedBodyDecoder.h"

#include "Platform/Base/Text.h"

#include <cstdint>

namespace vorn::AttributedBodyDecoder {
namespace {

constexpr std::string_view classMarker = "NSString";

/// The bytes between an immutable string's class and its length: version, references, and the type "+".
constexpr std::string_view usualHeader = "\x01\x94\x84\x01\x2B";

/// How many bytes after the class name the "+" may be in other variants.
constexpr std::size_t headerReach = 24;

struct Length {
    std::uint64_t bytes;
    std::size_t textStart;
};

std::optional<std::size_t> endOfFirstMatch(std::string_view marker, std::string_view bytes) noexcept
{
    const std::size_t found = bytes.find(marker);
    if (found == std::string_view::npos) return std::nullopt;
    return found + marker.size();
}

std::optional<std::size_t> lengthHeadIndex(std::size_t after, std::string_view bytes) noexcept
{
    if (bytes.substr(after).starts_with(usualHeader)) return after + usualHeader.size();
    const std::size_t plus = bytes.substr(after, headerReach).find('+');
    if (plus == std::string_view::npos) return std::nullopt;
    return after + plus + 1;
}

/// Reads the little-endian number of `count` bytes at `at`.
std::optional<std::uint64_t> readNumber(std::string_view bytes, std::size_t at, std::size_t count) noexcept
{
    if (at + count > bytes.size()) return std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t i = count; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

/// A length below 128 is one byte; 0x81 and 0x82 precede lengths of 16 and 32 bits.
std::optional<Length> readLength(std::size_t at, std::string_view bytes) noexcept
{
    const auto head = readNumber(bytes, at, 1);
    if (!head) return std::nullopt;
    if (*head < 0x80) return Length{*head, at + 1};
    const std::size_t width = *head == 0x81 ? 2 : *head == 0x82 ? 4 : 0;
    if (width == 0) return std::nullopt;
    const auto length = readNumber(bytes, at + 1, width);
    if (!length) return std::nullopt;
    return Length{*length, at + 1 + width};
}

} // namespace

std::optional<std::string_view> decode(ByteView data) noexcept
{
    const std::string_view bytes = textOf(data);
    const auto classEnd = endOfFirstMatch(classMarker, bytes);
    if (!classEnd) return std::nullopt;
    const auto head = lengthHeadIndex(*classEnd, bytes);
    if (!head) return std::nullopt;
    const auto length = readLength(*head, bytes);
    if (!length || length->bytes > bytes.size() - length->textStart) return std::nullopt;
    const std::string_view text = bytes.substr(length->textStart, length->bytes);
    if (!text::isWellFormed(text)) return std::nullopt;
    return text;
}

} // namespace vorn::AttributedBodyDecoder
