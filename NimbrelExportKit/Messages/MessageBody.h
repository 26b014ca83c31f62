#pragma once

#include "Platform/Base/Bytes.h"

#include <optional>
#include <string>
#include <string_view>

namespace vorn {

/// The text of a message as a person reads it: the plain text or, when that is empty, the attributed body's, without
/// the placeholders of attachments (U+FFFC) and without white space at both ends. Well-formed; ill-formed parts of
/// `plain` are repaired, an ill-formed attributed body counts as none.
/// The result points into the arguments or into `room`, which is overwritten where the text had to be changed.
/// Threads: any.
std::string_view messageBody(std::optional<std::string_view> plain, std::optional<ByteView> attributedBody,
                             std::string& room);

} // namespace vorn
