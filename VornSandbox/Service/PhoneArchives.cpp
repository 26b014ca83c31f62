#include "VornSandbox/Service/PhoneArchives.h"

#include "VornSandbox/Service/ServiceError.h"

namespace vorn::sandbox {
namespace {

/// Each takes a temporary file of the size of its messages; a few are enough to go back and forth.
constexpr std::size_t mostOpened = 8;

} // namespace

nlohmann::json PhoneArchives::page(const std::string& submissionId, std::int64_t page)
{
    requireArchive(submissionId);
    const std::lock_guard lock(mutex_);
    try {
        const MessagePages& pages = open(submissionId);
        return {{"manifest", pages.manifest()},
                {"count", pages.count()},
                {"perPage", MessagePages::perPage},
                {"page", page},
                {"messages", pages.page(page)}};
    } catch (const ArchiveError& error) {
        throw ServiceError(422, "unreadable_archive", error.what());
    }
}

void PhoneArchives::requireArchive(const std::string& submissionId) const
{
    const auto lock = backend_.state.lock();
    const auto submission = findSubmission(backend_.state, submissionId);
    if (!submission) throw ServiceError(404, "unknown_submission", "There is no such submission.");
    if (submission->status != "review" && !submission->isDecided()) {
        throw ServiceError(409, "no_archive", "The archive is not there.");
    }
}

const MessagePages& PhoneArchives::open(const std::string& submissionId)
{
    const auto found = opened_.find(submissionId);
    if (found != opened_.end()) return found->second;
    if (opened_.size() >= mostOpened) opened_.clear();
    return opened_.try_emplace(submissionId, backend_.files.archive(submissionId)).first->second;
}

} // namespace vorn::sandbox
