#pragma once

#include "VornSandbox/Service/Accounts.h"
#include "VornSandbox/Service/Call.h"
#include "VornSandbox/Service/State.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vorn::sandbox {

/// The quest's submissions: opened, filled with parts, completed and reviewed. Each has a folder with its archive, into
/// which parts are written as they arrive. Threads: any; the state's lock is never held while a body is read or a file
/// is checked.
class Submissions {
public:
    /// Keeps files in `uploads`.
    Submissions(State& state, const Settings& settings, const Accounts& accounts, std::filesystem::path uploads);
    Submissions(Submissions&&) = delete;

    std::vector<Route> routes();

    /// Decides every review whose time has come. Threads: hold the state's lock.
    void settle();

    /// Adds what the page shows of submissions. Threads: hold the state's lock.
    void show(nlohmann::json& view) const;

    /// Returns the archive of a complete submission; throws `ServiceError` for any other. Threads: hold the state's
    /// lock.
    std::filesystem::path archiveOf(const std::string& id) const;

private:
    /// A stored submission with its one asset. Its stored status is "open" (parts arrive), "checking" (the archive
    /// is being read), "review", "approved", "rejected", "expired" or "aborted".
    struct Submission {
        std::string id;
        std::string userId;
        std::int64_t attempt = 0; ///< counts from 1 for each account
        std::string assetId;
        std::string uploadId;
        std::int64_t sizeBytes = 0;
        std::int64_t partCount = 0;
        std::int64_t partSize = 0;
        std::string status;
        std::string reason; ///< of a rejection
        std::int64_t createdAt = 0;
        std::int64_t completedAt = 0; ///< when the review began
        std::int64_t decidedAt = 0;   ///< when the review ended
        std::string finding;          ///< the result of reading the archive

        std::int64_t sizeOfPart(std::int64_t number) const; ///< in bytes, exactly
        bool isOpen() const { return status == "open"; }
        bool hasArchive() const;

        NLOHMANN_DEFINE_TYPE_INTRUSIVE(Submission, id, userId, attempt, assetId, uploadId, sizeBytes, partCount,
                                       partSize, status, reason, createdAt, completedAt, decidedAt, finding)
    };
    struct Request {
        std::int64_t sizeBytes = 0;
        std::int64_t partCount = 0;
        std::optional<std::string> timezone{};
        std::optional<std::string> locale{};
    };
    using ListedParts = std::vector<std::pair<std::int64_t, std::string>>; ///< numbers and ETags

    Answer quest(const Call& call);
    Answer create(const Call& call);
    Answer partURLs(const Call& call);
    Answer complete(const Call& call);
    Answer abort(const Call& call);
    Answer status(const Call& call);
    Answer putPart(const Call& call);
    Answer decide(const Call& call);

    static Request readRequest(const Call& call);
    void refuseTooEarly(const std::string& userId) const;
    void refuseWrongPlan(const Request& request) const;
    void makeArchive(const std::string& id) const;
    void discard(const Submission& submission);
    nlohmann::json standingOf(const std::string& userId) const;
    std::string shownStatus(const Submission& submission) const;
    nlohmann::json statusJSON(const Submission& submission) const;
    nlohmann::json partsJSON(const Call& call, const Submission& submission, std::int64_t from, std::int64_t count);
    nlohmann::json viewOf(const Submission& submission) const;

    std::pair<Submission, std::int64_t> expectPart(const Call& call) const;
    void beginChecking(const std::string& id, const ListedParts& parts);
    Submission beginReview(const Submission& submission, const std::string& sha256);

    std::vector<Submission> select(const std::string& where, const std::vector<SQLiteValue>& values) const;
    std::optional<Submission> newest(const std::string& userId, const std::string& condition) const;
    Submission require(const std::string& id) const;
    Submission requireStill(const std::string& status, const std::string& id) const;
    Submission own(const Call& call) const;
    std::filesystem::path folderOf(const std::string& id) const { return uploads_ / id; }
    std::filesystem::path archiveFile(const std::string& id) const { return folderOf(id) / "archive.zip"; }

    State& state_;
    const Settings& settings_;
    const Accounts& accounts_;
    const std::filesystem::path uploads_;
};

} // namespace vorn::sandbox
