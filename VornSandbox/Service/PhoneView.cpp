#include "VornSandbox/Service/PhoneView.h"

#include <algorithm>

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::int64_t mostSubmissions = 20;

json usersView(const Backend& backend)
{
    json users = json::array();
    for (const User& user : backend.sessions.users()) users.push_back({{"id", user.id}, {"name", user.displayName}});
    return users;
}

json linksView(const Backend& backend)
{
    json links = json::array();
    for (const LinkView& link : backend.links.waiting()) {
        links.push_back({{"id", link.id},
                         {"deviceName", link.request.deviceName},
                         {"osVersion", link.request.osVersion.value_or("")},
                         {"appVersion", link.request.appVersion},
                         {"status", link.status},
                         {"expiresAt", toMilliseconds(link.expiresAt)}});
    }
    return links;
}

json macsView(const Backend& backend)
{
    json macs = json::array();
    for (const SessionView& mac : backend.sessions.active()) {
        macs.push_back(
            {{"deviceName", mac.deviceName}, {"userName", mac.userName}, {"linkedAt", toMilliseconds(mac.linkedAt)}});
    }
    return macs;
}

std::string userName(const Backend& backend, const std::string& id)
{
    const auto found = std::ranges::find(backend.sessions.users(), id, &User::id);
    return found == backend.sessions.users().end() ? id : found->displayName;
}

json reviewView(const ReviewPlan& plan)
{
    switch (plan.kind) {
    case ReviewPlan::Kind::manual: return {{"by", "button"}};
    case ReviewPlan::Kind::checked: return {{"by", "archive"}};
    case ReviewPlan::Kind::fixed: break;
    }
    return {{"by", "plan"}, {"ending", plan.outcome.status}, {"reason", plan.outcome.reason}};
}

/// When a review decides by itself; 0 when it does not.
std::int64_t decisionTime(const Submission& submission, const Settings& settings)
{
    if (submission.status != "review" || settings.review.kind == ReviewPlan::Kind::manual) return 0;
    return toMilliseconds(submission.completedAt + 2 * settings.reviewStep);
}

json submissionView(const Backend& backend, const Submission& submission)
{
    json received = json::array();
    if (submission.status == "open") {
        for (const ReceivedPart& part : partsOf(backend.state, submission.id)) received.push_back(part.number);
    }
    return {{"id", submission.id},
            {"userName", userName(backend, submission.userId)},
            {"attempt", submission.attempt},
            {"status", shownStatus(submission, backend.settings, backend.state.now())},
            {"reason", submission.reason.value_or("")},
            {"sizeBytes", submission.sizeBytes},
            {"partCount", submission.partCount},
            {"receivedParts", received},
            {"createdAt", toMilliseconds(submission.createdAt)},
            {"inReview", submission.status == "review"},
            {"decidesAt", decisionTime(submission, backend.settings)},
            {"hasArchive", submission.status == "review" || submission.isDecided()},
            {"finding", submission.finding},
            {"rewardUsd", backend.settings.rewardUsd}};
}

} // namespace

json phoneView(const Backend& backend)
{
    json submissions = json::array();
    for (const Submission& submission : newestSubmissions(backend.state, mostSubmissions)) {
        submissions.push_back(submissionView(backend, submission));
    }
    return {{"users", usersView(backend)},
            {"links", linksView(backend)},
            {"macs", macsView(backend)},
            {"submissions", submissions},
            {"review", reviewView(backend.settings.review)},
            {"reasons", rejectionReasons}};
}

} // namespace vorn::sandbox
