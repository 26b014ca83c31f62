#pragma once

#include "Platform/Base/Dates.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// Tells the time. Replaced in tests.
using Clock = std::function<Instant()>;

/// How a review ends.
struct Outcome {
    std::string status; ///< "approved", "rejected" or "expired"
    std::string reason; ///< of a rejection
    bool operator==(const Outcome&) const = default;
};

/// The reasons for a rejection that have a text of their own on the Mac.
constexpr std::array<std::string_view, 6> rejectionReasons{
    "media_unreadable", "wrong_provider",         "duplicate_media",
    "export_too_small", "nothing_new_since_last", "authenticity_suspected",
};

/// What decides a review once its time has come.
struct ReviewPlan {
    enum class Kind {
        fixed,   ///< always `outcome`
        checked, ///< approves an archive that reads as an export with enough prompts
        manual,  ///< waits for a press of a button on the page
    };

    Kind kind = Kind::fixed;
    Outcome outcome{.status = "approved", .reason = {}};

    /// Reads "approved", "rejected:REASON", "expired", "checked" or "manual"; nothing when `text` is none of them.
    static std::optional<ReviewPlan> parse(std::string_view text);
};

/// How the service behaves. The initial values are those of a run without options.
struct Settings {
    using Duration = std::chrono::milliseconds; ///< given in seconds, which may have fractions

    std::vector<std::string> users{"Sam Rivera"}; ///< the accounts a phone may link a Mac to
    std::vector<std::string> handles{"+15550102030", "nimbrel@example.com"};
    std::int64_t maxBytes = 512LL * 1024 * 1024; ///< of one archive
    double rewardUsd = 12.5;
    std::int64_t partSize = 8LL * 1024 * 1024;
    std::int64_t initialParts = 50; ///< part URLs that come with a new submission
    std::int64_t pollIntervalMs = 1000;
    Duration linkLifetime = std::chrono::minutes(2);
    Duration tokenLifetime = std::chrono::hours(1);
    Duration urlLifetime = std::chrono::minutes(15);
    Duration reviewStep = std::chrono::seconds(3); ///< how long "analyzing" and "review_pending" each last
    Duration cooldown = std::chrono::hours(24 * 7);
    bool autoApprove = false;      ///< the phone scans and confirms by itself
    bool expiredFirstUrls = false; ///< the first URL of each part has expired when it is handed out
    ReviewPlan review;

    std::int64_t urlLifetimeSeconds() const { return std::chrono::floor<std::chrono::seconds>(urlLifetime).count(); }
};

} // namespace vorn::sandbox
