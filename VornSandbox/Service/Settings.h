#pragma once

#include "Platform/Base/Dates.h"
#include "VornSandbox/Service/ReviewPlan.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace vorn::sandbox {

/// Tells the time. Tests hand in one that they move.
using Clock = std::function<Instant()>;

/// How the service behaves, with the values of a run without options.
struct Settings {
    using Seconds = std::chrono::milliseconds; ///< given in seconds, which may have fractions

    std::vector<std::string> users{"Sam Rivera"}; ///< the accounts a phone may link a Mac to
    std::vector<std::string> handles{"+15550102030", "nimbrel@example.com"};
    std::int64_t maxBytes = 512LL * 1024 * 1024; ///< of one archive
    double rewardUsd = 12.5;
    std::int64_t partSize = 8LL * 1024 * 1024;
    std::int64_t initialParts = 50; ///< part URLs that come with a new submission
    std::int64_t pollIntervalMs = 1000;
    Seconds linkLifetime = std::chrono::minutes(2);
    Seconds tokenLifetime = std::chrono::hours(1);
    Seconds urlLifetime = std::chrono::minutes(15);
    Seconds reviewStep = std::chrono::seconds(3); ///< "analyzing" and "review_pending" last as long each
    Seconds cooldown = std::chrono::hours(24 * 7);
    bool autoApprove = false;      ///< the phone scans and confirms by itself
    bool expiredFirstUrls = false; ///< the first URL of each part has expired when it is handed out
    ReviewPlan review;
};

} // namespace vorn::sandbox
