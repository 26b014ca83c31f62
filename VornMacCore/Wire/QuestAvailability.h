#pragma once

#include "Platform/Base/Dates.h"
#include "VornMacCore/Wire/QuestRecords.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace vorn {

/// Whether the user may upload an export now, and if not, why. A value; threads: any.
class QuestAvailability {
public:
    /// The last upload was approved; the next is possible after `until`.
    struct Cooldown {
        Instant until;
        bool operator==(const Cooldown&) const = default;
    };
    /// The last upload was rejected, for the reason that `RejectionCopy` puts into words; a new one may be made.
    struct LastRejected {
        std::optional<std::string> reasonKey;
        bool operator==(const LastRejected&) const = default;
    };
    /// An upload may be made.
    struct Available {
        bool operator==(const Available&) const = default;
    };
    /// An upload is under review.
    struct InReview {
        bool operator==(const InReview&) const = default;
    };
    using State = std::variant<Cooldown, LastRejected, Available, InReview>;

    QuestAvailability(State state)
        : state_(std::move(state)) {} // NOLINT(google-explicit-constructor): one of its states

    /// The availability that `quest` gives at the time `now`. An unknown status or an unreadable time never blocks an
    /// upload: the service has the last word on a submission.
    QuestAvailability(const QuestWire& quest, Instant now);

    const State& state() const noexcept { return state_; }

    template <class Case>
    bool is() const noexcept
    {
        return std::holds_alternative<Case>(state_);
    }

    bool canUpload() const noexcept { return is<LastRejected>() || is<Available>(); }

    bool operator==(const QuestAvailability&) const = default;

private:
    State state_;
};

} // namespace vorn
