#pragma once

#include "Platform/Base/CancelFlag.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

/// Finds what a person would call a link in a chat message.
/// Threads: a detector is used by one thread at a time.
class LinkDetector {
public:
    virtual ~LinkDetector() = default;

    /// Appends the absolute URL of each link in `text`, in order of appearance, repeats included. `text` is well-formed
    /// UTF-8. A link without a scheme is returned as `http://…`; on macOS links with other schemes may be found too.
    /// Throws `Cancelled` soon after the detector's flag is raised, even within a long text.
    virtual void find(std::string_view text, std::vector<std::string>& urls) const = 0;

    /// The system's detector where there is one, else ours; null on failure. `cancel` must outlive it.
    static std::unique_ptr<LinkDetector> make(const CancelFlag& cancel = CancelFlag::never());
};

} // namespace vorn
