#pragma once

#include "VornSandbox/Service/Call.h"

#include <array>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorn::sandbox {

/// Something that goes wrong on purpose: "OPERATION=EFFECT", then "xN" for only N requests and "@K" to begin with the
/// K-th request of that operation, such as "put-part=503x2@3".
struct Fault {
    enum class Effect {
        status,  ///< answers with `status`
        drop,    ///< closes the connection without an answer
        hang,    ///< takes the request and never answers
        garbage, ///< answers 200 with something that is not JSON
        slow,    ///< answers as usual, but three seconds later
        noAsset, ///< opens the submission, but names no asset
        badURL,  ///< the first part URL is a file URL
        truncate ///< announces a longer body than it sends
    };

    std::string operation;
    Effect effect = Effect::status;
    int status = 0;
    std::int64_t from = 1;               ///< the first request affected, counted from 1
    std::optional<std::int64_t> times{}; ///< how many requests are affected; all if absent

    /// Nothing when `text` is not a fault.
    static std::optional<Fault> parse(std::string_view text);
};

/// The names of the operations that a fault can be given for.
constexpr std::array<std::string_view, 11> operations{
    "create-link", "poll-link", "refresh",  "logout", "quest",      "create-submission",
    "part-urls",   "put-part",  "complete", "abort",  "submission",
};

/// Counts requests and decides which are affected. Threads: any.
class FaultPlan {
public:
    explicit FaultPlan(std::vector<Fault> faults) : faults_(std::move(faults)) {}

    /// Returns the first fault that affects this request. Call it once per request.
    std::optional<Fault> next(const std::string& operation);

private:
    std::mutex mutex_;
    std::vector<Fault> faults_;
    std::map<std::string, std::int64_t> seen_;
};

/// Returns the answer to send in place of the service's; nothing if the service answers after all. Sleeps for a slow
/// fault.
std::optional<Answer> answerInstead(const Fault& fault);

/// Changes the service's answer, for faults that do so.
void spoil(Answer& answer, const Fault& fault);

} // namespace vorn::sandbox
