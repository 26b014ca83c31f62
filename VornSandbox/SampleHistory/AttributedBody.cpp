#include "VornSandbox/SampleHistory/AttributedBody.h"

#include <array>
#include <initializer_list>
#include <string>

namespace vorn {
namespace {

using namespace std::literals;

/// What differs between the kinds. A typed stream spells out every class and type once and names it by a label
/// afterwards; labels are numbered from 0x92, so each depends on the classes before it.
struct Form {
    std::string_view bodyClass; ///< and its superclasses, up to the root
    std::string_view textClass;
    std::string_view root;   ///< the label of NSObject
    std::string_view string; ///< the labels of NSString and of the type "+", for bytes
    std::string_view number; ///< the label of the type "i", twice: as a text and as a type
};

constexpr std::string_view immutableBody = "\x12NSAttributedString\0"sv;
constexpr std::string_view mutableBody = "\x19NSMutableAttributedString\0\x84\x84\x12NSAttributedString\0"sv;
constexpr std::string_view immutableString = "\x08NSString\x01"sv;
constexpr std::string_view mutableString = "\x0FNSMutableString\x01\x84\x84\x08NSString\x01"sv;

/// Indexed by `AttributedBodyKind`.
constexpr std::array forms{
    Form{immutableBody, immutableString, "\x94", "\x96\x96", "\x99\x99"},
    Form{mutableBody, mutableString, "\x95", "\x98\x98", "\x9B\x9B"},
    Form{mutableBody, immutableString, "\x95", "\x97\x97", "\x9A\x9A"},
};

/// A length: one byte where it fits, else 0x81 or 0x82 and 2 or 4 bytes, little-endian.
std::string integer(std::size_t value)
{
    if (value <= 0x7F) return {static_cast<char>(value)};
    const bool isShort = value <= 0x7FFF; // integers are signed
    std::string bytes(1, isShort ? '\x81' : '\x82');
    for (int shift = 0; shift < (isShort ? 16 : 32); shift += 8) bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

std::string joined(std::initializer_list<std::string_view> pieces)
{
    std::string whole;
    for (const std::string_view piece : pieces) whole += piece;
    return whole;
}

/// The attributes of the whole text: a dictionary with one number.
std::string run(std::size_t length, const Form& form)
{
    return joined({"\x84\x02iI\x01"sv, integer(length), "\x92\x84\x84\x84\x0CNSDictionary\0"sv, form.root,
                   "\x84\x01i\x01\x92\x84"sv, form.string, "\x1D__kIMMessagePartAttributeName\x86"sv,
                   "\x92\x84\x84\x84\x08NSNumber\0\x84\x84\x07NSValue\0"sv, form.root, "\x84\x01*\x84"sv, form.number,
                   "\0\x86\x86"sv});
}

} // namespace

ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind)
{
    const Form& form = forms.at(static_cast<std::size_t>(kind));
    const std::string bytes =
        joined({"\x04\x0Bstreamtyped\x81\xE8\x03\x84\x01@\x84\x84\x84"sv, form.bodyClass,
                "\x84\x84\x08NSObject\0\x85\x92\x84\x84\x84"sv, form.textClass, form.root, "\x84\x01+"sv,
                integer(text.size()), text, "\x86"sv, text.empty() ? ""s : run(utf16Length(text), form), "\x86"sv});
    const ByteView view = bytesOf(bytes);
    return {view.begin(), view.end()};
}

std::size_t utf16Length(std::string_view text) noexcept
{
    // Each scalar has one byte that is not a continuation; those of four bytes, led by F0 to F4, need a surrogate pair.
    std::size_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        units += ((byte & 0xC0U) != 0x80U ? 1U : 0U) + (byte >= 0xF0U ? 1U : 0U);
    }
    return units;
}

} // namespace vorn
