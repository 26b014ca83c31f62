#pragma once

#include "Platform/Base/Bytes.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vorn {

/// Which classes stand at the head of the blob; Messages writes each of them.
enum class AttributedBodyKind {
    immutableText,        ///< NSAttributedString holding NSString
    mutableText,          ///< NSMutableAttributedString holding NSMutableString
    mutableWithFixedText, ///< NSMutableAttributedString holding NSString
};

/// What an attribute holds. A number is written with the encoding "i", or "q" when it is negative.
struct AttributeURL {
    std::string absolute;
};
using AttributeValue = std::variant<std::int64_t, std::string, AttributeURL, ByteBuffer>;

struct TextAttribute {
    std::string_view name; ///< such as "__kIMMessagePartAttributeName"
    AttributeValue value;
};

/// Consecutive text with the same attributes.
struct AttributeRun {
    std::size_t length = 0; ///< in UTF-16 units
    std::vector<TextAttribute> attributes;
};

/// The content of `message.attributedBody` for `text` (UTF-8): a typed stream of an attributed string with the
/// attribute runs after the text. The runs cover the text. Throws `std::out_of_range` for a number of more than 32
/// bits. Threads: any.
ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind, std::span<const AttributeRun> runs);

/// As above, with the one run that every plain message has: the number 0 of its only part. An empty text has no run.
ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind);

/// How many UTF-16 units the well-formed UTF-8 `text` is long.
std::size_t utf16Length(std::string_view text) noexcept;

} // namespace vorn
