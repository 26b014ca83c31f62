#pragma once

#include "Platform/Base/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The visible text of a message: the plain text or, if empty, the attributed body's, trimmed and without attachment
/// placeholders (U+FFFC). Well-formed; ill-formed parts of `plain` are repaired, an ill-formed attributed body counts
/// as none.
/// The result points into the arguments or into `room`, which is overwritten where the text had to be changed.
/// Threads: any.
std::string_view messageBody(std::optional<std::string_view> plain, std::optional<ByteView> attributedBody,
                             std::string& room);

} // namespace vorn
