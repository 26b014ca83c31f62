#pragma once

#include "Platform/Base/Dates.h"

#include <optional>
#include <string>
#include <variant>

namespace vorn {

/// How far linking this Mac has come.
struct LinkPhase {
    /// A code is being asked for.
    struct Loading {
        bool operator==(const Loading&) const = default;
    };
    /// A code waits for the phone.
    struct Showing {
        std::string qrPayload; ///< a secret, for the phone alone
        std::optional<Instant> expiresAt;
        bool operator==(const Showing&) const = default;
    };
    /// The phone has read the code; the user has to confirm there.
    struct Scanned {
        bool operator==(const Scanned&) const = default;
    };
    /// The phone declined; a new code follows.
    struct Rejected {
        bool operator==(const Rejected&) const = default;
    };
    /// A request failed; it is tried again. The code is of no use any more.
    struct Failed {
        std::string text; ///< from `describe`
        bool operator==(const Failed&) const = default;
    };

    std::variant<Loading, Showing, Scanned, Rejected, Failed> state;
    bool operator==(const LinkPhase&) const = default;
};

} // namespace vorn
