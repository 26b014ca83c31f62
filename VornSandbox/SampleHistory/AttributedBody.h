#pragma once

#include "Platform/Base/Bytes.h"

#include <cstddef>
#include <string_view>

namespace vorn {

/// Which classes the blob begins with; Messages writes all three kinds.
enum class AttributedBodyKind {
    immutableText,        ///< NSAttributedString holding NSString
    mutableText,          ///< NSMutableAttributedString holding NSMutableString
    mutableWithFixedText, ///< NSMutableAttributedString holding NSString
};

/// The content of `message.attributedBody` for `text` (UTF-8): a typed stream of an attributed string with the one run
/// that every plain message has, the number 0 of its only part. Messages divides texts with links, attachments or bold
/// words into more runs, all stored after the text, where an export reads nothing. An empty text has no run. Threads:
/// any.
ByteBuffer attributedBody(std::string_view text, AttributedBodyKind kind);

/// The length of `text`, well-formed UTF-8, in UTF-16 code units.
std::size_t utf16Length(std::string_view text) noexcept;

} // namespace vorn
