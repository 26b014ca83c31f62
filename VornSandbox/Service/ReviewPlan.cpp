#include "VornSandbox/Service/ReviewPlan.h"

#include <algorithm>

namespace vorn::sandbox {
namespace {

/// Reasons are keys, such as "export_too_small"; unknown ones are fine, for the client must bear them.
bool isKey(std::string_view text)
{
    return !text.empty() && text.size() <= 64 && std::ranges::all_of(text, [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
    });
}

} // namespace

std::optional<ReviewPlan> ReviewPlan::parse(std::string_view text)
{
    if (text == "manual") return ReviewPlan{.kind = Kind::manual};
    if (text == "checked") return ReviewPlan{.kind = Kind::checked};
    const auto colon = text.find(':');
    Outcome outcome{.status = std::string(text.substr(0, colon)), .reason = {}};
    if (colon != std::string_view::npos) outcome.reason = text.substr(colon + 1);
    if (!isValid(outcome) || (outcome.reason.empty() && colon != std::string_view::npos)) return std::nullopt;
    return ReviewPlan{.kind = Kind::fixed, .outcome = std::move(outcome)};
}

bool isValid(const Outcome& outcome)
{
    if (outcome.status == "rejected") return isKey(outcome.reason);
    return (outcome.status == "approved" || outcome.status == "expired") && outcome.reason.empty();
}

} // namespace vorn::sandbox
