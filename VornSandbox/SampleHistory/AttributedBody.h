#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <string_view>

namespace vorn {

/// Which classes stand at the head of the blob; Messages writes each of them.
enum class AttributedBodyKind {
    immutableText,        ///< NSAttributedString holding NSString
    mutableText,          ///< NSMutableAttributedString holding NSMutableString
    mutableWithFixedText, ///< NSMutableAttributedString holding NSString
};

/// The content of `message.attributedBody` for `text` (UTF-8): a typed stream of an attributed string with the one run
/// that every plain message has, the number 0 of its only part. Messages divides texts with links, attachments or bold
/// words into more runs, all behind the text, where an export reads nothing. An empty text has no run. Threads: any.
ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind);

/// How many UTF-16 units the well-formed UTF-8 `text` is long.
std::size_t utf16Length(std::string_view text) noexcept;

} // namespace vorn
