#include "VornSandbox/Service/Submission.h"

#include <algorithm>

namespace vorn::sandbox {
namespace {

const std::string columns = "SELECT id, userId, attempt, assetId, uploadId, sizeBytes, partCount, partSize, status,"
                            " reason, createdAt, completedAt, decidedAt, finding FROM submission ";

Submission read(const SQLiteRow& row)
{
    return {.id = row.text(0).value_or(""),
            .userId = row.text(1).value_or(""),
            .attempt = row.int64OrZero(2),
            .assetId = row.text(3).value_or(""),
            .uploadId = row.text(4).value_or(""),
            .sizeBytes = row.int64OrZero(5),
            .partCount = row.int64OrZero(6),
            .partSize = row.int64OrZero(7),
            .status = row.text(8).value_or(""),
            .reason = row.text(9),
            .createdAt = fromMilliseconds(row.int64OrZero(10)),
            .completedAt = fromMilliseconds(row.int64OrZero(11)),
            .decidedAt = fromMilliseconds(row.int64OrZero(12)),
            .finding = row.text(13).value_or("")};
}

std::vector<Submission> select(const StateDatabase& state, const std::string& where,
                               const std::vector<SQLiteValue>& values)
{
    std::vector<Submission> found;
    state.query(columns + where, values, [&](const SQLiteRow& row) { found.push_back(read(row)); });
    return found;
}

std::optional<Submission> firstOf(std::vector<Submission> found)
{
    return found.empty() ? std::nullopt : std::optional(std::move(found.front()));
}

} // namespace

std::int64_t Submission::sizeOfPart(std::int64_t number) const
{
    return std::clamp(sizeBytes - (number - 1) * partSize, std::int64_t{0}, partSize);
}

std::optional<Submission> findSubmission(const StateDatabase& state, const std::string& id)
{
    return firstOf(select(state, "WHERE id = ?", {id}));
}

std::optional<Submission> newestSubmission(const StateDatabase& state, const std::string& userId,
                                           const std::string& condition)
{
    return firstOf(select(state, "WHERE userId = ? AND " + condition + " ORDER BY sequence DESC LIMIT 1", {userId}));
}

std::vector<Submission> newestSubmissions(const StateDatabase& state, std::int64_t atMost)
{
    return select(state, "ORDER BY sequence DESC LIMIT ?", {atMost});
}

std::vector<ReceivedPart> partsOf(const StateDatabase& state, const std::string& submissionId)
{
    std::vector<ReceivedPart> parts;
    state.query("SELECT number, etag FROM part WHERE submissionId = ? ORDER BY number", {submissionId},
                [&](const SQLiteRow& row) {
                    parts.push_back({.number = row.int64OrZero(0), .etag = row.text(1).value_or("")});
                });
    return parts;
}

} // namespace vorn::sandbox
