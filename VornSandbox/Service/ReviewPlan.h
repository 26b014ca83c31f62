#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vorn::sandbox {

/// How a review ends.
struct Outcome {
    std::string status; ///< "approved", "rejected" or "expired"
    std::string reason; ///< of a rejection
    bool operator==(const Outcome&) const = default;
};

/// The reasons of a rejection that have words of their own on the Mac.
constexpr std::array<std::string_view, 6> rejectionReasons{
    "media_unreadable", "wrong_provider",         "duplicate_media",
    "export_too_small", "nothing_new_since_last", "authenticity_suspected",
};

/// What decides a review once its time has come.
struct ReviewPlan {
    enum class Kind {
        fixed,   ///< always `outcome`
        checked, ///< approves an archive that reads as an export with enough prompts
        manual,  ///< waits for somebody to press a button
    };

    Kind kind = Kind::fixed;
    Outcome outcome{.status = "approved", .reason = {}};

    /// Reads "approved", "rejected:REASON", "expired", "checked" or "manual"; nothing when `text` is none of them.
    static std::optional<ReviewPlan> parse(std::string_view text);
};

/// Whether `outcome` is one that a review can have: a known status, and a reason exactly when it is a rejection.
bool isValid(const Outcome& outcome);

} // namespace vorn::sandbox
