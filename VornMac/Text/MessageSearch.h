#pragma once

#include "NimbrelExportKit/Messages/ExportedMessage.h"

#include <string>
#include <string_view>

namespace vorn {

/// Finds words in messages, whatever their case: in the text, the links, and what each attachment is. Threads: one at a
/// time.
class MessageSearch {
public:
    /// White space around `words` does not count.
    explicit MessageSearch(std::string_view words);

    /// Whether there is nothing to look for: every message has it.
    bool isEmpty() const noexcept { return words_.empty(); }
    bool finds(const ExportedMessage& message);

private:
    bool isIn(std::string_view text);

    std::string words_;
    std::string room_;
};

} // namespace vorn
