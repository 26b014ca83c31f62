#pragma once

#include "Platform/Base/Bytes.h"

#include <optional>
#include <string_view>

/// The text of an attributed string archived in the typed-stream format, as `message.attributedBody` holds it.
namespace vorn::AttributedBodyDecoder {

/// The first string object in `data`; nothing if there is none, or it is truncated or not well-formed UTF-8. The result
/// points into `data`. Threads: any.
///
/// The stream is not parsed: its classes and their versions differ between systems, but the first object of class
/// NSString is the text in all of them, and its length follows a "+" within a few bytes of the class name.
std::optional<std::string_view> decode(ByteView data) noexcept;

} // namespace vorn::AttributedBodyDecoder
