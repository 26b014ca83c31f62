#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"

#include <string>
#include <string_view>

namespace vorn {

/// Searches messages for words, exactly as given but ignoring case: in the text, the links, and the kinds of
/// attachments. Threads: one at a time.
class MessageSearch {
public:
    /// Ignores white space around `words`.
    explicit MessageSearch(std::string_view words);

    /// Whether there is nothing to look for: then every message matches.
    bool isEmpty() const noexcept { return words_.empty(); }
    bool finds(const ExportedMessage& message);

private:
    bool isIn(std::string_view text);

    std::string words_;
    std::string buffer_;
};

} // namespace vorn
