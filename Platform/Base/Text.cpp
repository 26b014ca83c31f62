#include "Platform/Base/Text.h"

#include "Platform/Base/Fatal.h"
#include "Platform/Base/Owned.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace vorn::text {
namespace {

constexpr std::uint64_t highBits = 0x8080808080808080;

/// Returns `from` moved past the whole words of ASCII that follow it. Fast path: most text is ASCII.
std::size_t skipASCII(std::string_view bytes, std::size_t from) noexcept
{
    while (bytes.size() - from >= sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + from, sizeof word);
        if ((word & highBits) != 0) break;
        from += sizeof word;
    }
    return from;
}

bool isSpace(UChar32 scalar) noexcept
{
    if (scalar < 0x80) return scalar == ' ' || (scalar >= 0x09 && scalar <= 0x0D);
    return scalar == 0x85 || (U_GET_GC_MASK(scalar) & U_GC_Z_MASK) != 0;
}

bool isContinuation(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

/// The scalar at `at`, moving `at` past it. Negative at ill-formed bytes: `at` moves past one maximal ill-formed part.
UChar32 next(std::string_view bytes, std::size_t& at) noexcept
{
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    UChar32 scalar = 0;
    U8_NEXT(data, at, bytes.size(), scalar); // NOLINT(bugprone-inc-dec-in-conditions): ICU's macro
    return scalar;
}

} // namespace

bool isWellFormed(std::string_view bytes) noexcept
{
    for (std::size_t at = skipASCII(bytes, 0); at < bytes.size();) {
        if (next(bytes, at) < 0) return false;
        if (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80) at = skipASCII(bytes, at);
    }
    return true;
}

std::string repaired(std::string_view bytes)
{
    std::string result;
    result.reserve(bytes.size());
    std::size_t copied = 0;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t start = at;
        if (next(bytes, at) >= 0) continue;
        result.append(bytes, copied, start - copied).append("\xEF\xBF\xBD");
        copied = at;
    }
    return result.append(bytes, copied);
}

std::string_view repaired(std::string_view bytes, std::string& room)
{
    if (isWellFormed(bytes)) return bytes;
    room = repaired(bytes);
    return room;
}

std::string_view trimmed(std::string_view text) noexcept
{
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t after = begin;
        if (!isSpace(next(text, after))) break;
        begin = after;
    }
    std::size_t end = text.size();
    while (end > begin) {
        std::size_t last = end - 1;
        while (last > begin && isContinuation(text[last])) --last;
        std::size_t after = last;
        if (!isSpace(next(text, after))) break;
        end = last;
    }
    return text.substr(begin, end - begin);
}

std::string lowercased(std::string_view text)
{
    std::string result;
    icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(text.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())), sink,
                              nullptr, status);
    return result;
}

void append(std::string& text, char32_t scalar)
{
    const bool isScalar = scalar < 0xD800 || (scalar > 0xDFFF && scalar <= 0x10FFFF);
    std::array<char, U8_MAX_LENGTH> bytes{};
    std::size_t size = 0;
    U8_APPEND_UNSAFE(bytes, size, isScalar ? static_cast<UChar32>(scalar) : 0xFFFD);
    text.append(bytes.data(), size);
}

std::string prefixOfCharacters(std::string_view text, std::size_t count)
{
    if (text.size() <= count) return std::string(text); // a character has at least one byte
    UErrorCode status = U_ZERO_ERROR;
    const Owned<UText, utext_close> bytes(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (characters) characters->setText(bytes.get(), status);
    if (U_FAILURE(status)) fatalError("Unicode's data is missing");
    std::int32_t end = 0;
    while (count-- > 0 && end != icu::BreakIterator::DONE) end = characters->next();
    return std::string(text.substr(0, end == icu::BreakIterator::DONE ? text.size() : static_cast<std::size_t>(end)));
}

std::u32string scalars(std::string_view text)
{
    std::u32string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const UChar32 scalar = next(text, at);
        result.push_back(scalar < 0 ? U'\uFFFD' : static_cast<char32_t>(scalar));
    }
    return result;
}

bool isDecimalDigit(char32_t scalar) noexcept
{
    return u_isdigit(static_cast<UChar32>(scalar)) != 0;
}

} // namespace vorn::text
