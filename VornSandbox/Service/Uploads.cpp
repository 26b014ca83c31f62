#include "Platform/Base/SHA256.h"
#include "VornSandbox/Service/Archive.h"
#include "VornSandbox/Service/RequestChecks.h"
#include "VornSandbox/Service/Submissions.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <fstream>

// The upload half of `Submissions`: part URLs, parts, and the archive that they form.

namespace vorn::sandbox {
namespace {

using nlohmann::json;

constexpr std::size_t largestList = 4 * std::size_t{1024} * 1024; ///< 10,000 parts with their ETags fit
constexpr std::int64_t mostURLsAtOnce = 50;

/// Writes a part to its place in the archive while it arrives. Throws `std::system_error`.
class IncomingPart {
public:
    IncomingPart(const std::filesystem::path& archive, std::int64_t offset)
    {
        stream_.exceptions(std::ios::badbit | std::ios::failbit);
        stream_.open(archive, std::ios::in | std::ios::out | std::ios::binary);
        stream_.seekp(offset);
    }

    void write(std::string_view bytes)
    {
        stream_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        hash_.update(bytesOf(bytes));
        size_ += static_cast<std::int64_t>(bytes.size());
    }
    /// Returns the entity tag, in quotes as in HTTP. Call it once, after the last write.
    std::string finish()
    {
        stream_.close();
        return '"' + hash_.hexDigest().substr(0, 32) + '"';
    }
    std::int64_t size() const { return size_; }

private:
    std::fstream stream_;
    SHA256 hash_;
    std::int64_t size_ = 0;
};

void checkPartFrame(const Call& call, std::int64_t size)
{
    refuseToken(call);
    if (call.header("content-type") != nullptr) {
        throw ServiceError(400, "unexpected_content_type", "A part has no Content-Type.");
    }
    const auto length = call.contentLength();
    if (call.header("transfer-encoding") != nullptr || !length) {
        throw ServiceError(411, "missing_length", "A part comes with its Content-Length, not in chunks.");
    }
    if (*length != size) {
        throw ServiceError(400, "wrong_part_size",
                           fmt::format("The part has {} bytes, but its Content-Length is {}.", size, *length));
    }
}

bool isSHA256(const std::string& text)
{
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

} // namespace

std::int64_t Submissions::Submission::sizeOfPart(std::int64_t number) const
{
    return std::clamp(sizeBytes - (number - 1) * partSize, std::int64_t{0}, partSize);
}

Submissions::Submission Submissions::requireStill(const std::string& status, const std::string& id) const
{
    Submission submission = require(id);
    if (submission.status == status) return submission;
    throw ServiceError(409, "not_open",
                       fmt::format("The submission takes no parts any more: it is {}.", submission.status));
}

Answer Submissions::partURLs(const Call& call)
{
    auto lock = state_.lock();
    const Submission submission = own(call);
    lock.unlock();
    const RequestBody body(call, {"fromPart", "count"});
    const std::int64_t from = body.integer("fromPart");
    const std::int64_t count = body.integer("count");
    if (from < 1 || from > submission.partCount || count < 1 || count > mostURLsAtOnce ||
        count > submission.partCount - from + 1) {
        throw ServiceError(
            422, "bad_range",
            fmt::format("There are parts 1 to {}, and at most {} URLs at once.", submission.partCount, mostURLsAtOnce));
    }
    lock.lock();
    return Answer::of({{"submissionId", submission.id},
                       {"assetId", submission.assetId},
                       {"parts", partsJSON(call, requireStill("open", submission.id), from, count)},
                       {"expiresInSeconds", settings_.urlLifetimeSeconds()}});
}

/// URLs for uploading parts: whoever holds one needs no token until it expires.
json Submissions::partsJSON(const Call& call, const Submission& submission, std::int64_t from, std::int64_t count)
{
    // Not from the Host header, which the client chooses.
    const std::string base = serviceURL(call.servicePort) + "/uploads/" + submission.assetId;
    json parts = json::array();
    for (std::int64_t part = from; part < from + count; ++part) {
        const bool isStale =
            settings_.expiredFirstUrls &&
            !state_.number("SELECT 1 FROM partURL WHERE assetId = ? AND number = ?", {submission.assetId, part});
        const std::int64_t expiresAt = state_.now() + (isStale ? 0 : settings_.urlLifetime.count());
        const std::string signature = newSecret();
        state_.run("INSERT INTO partURL VALUES (?, ?, ?, ?)", {hashOf(signature), submission.assetId, part, expiresAt});
        parts.push_back({{"partNumber", part},
                         {"url", fmt::format("{}/{}?expires={}&signature={}", base, part, expiresAt, signature)}});
    }
    return parts;
}

/// The submission and part number that the call's URL allows to be uploaded. Hold the state's lock.
std::pair<Submissions::Submission, std::int64_t> Submissions::expectPart(const Call& call) const
{
    const std::string& asset = call.arguments[0];
    const std::int64_t number = wholeNumber(call.arguments[1]).value_or(0);
    const auto expiresAt =
        state_.number("SELECT expiresAt FROM partURL WHERE signatureHash = ? AND assetId = ? AND number = ?",
                      {hashOf(call.queryValue("signature")), asset, number});
    if (!expiresAt || std::to_string(*expiresAt) != call.queryValue("expires")) {
        throw ServiceError(403, "bad_signature", "The upload URL's signature does not fit.");
    }
    if (state_.now() >= *expiresAt) throw ServiceError(403, "expired_url", "The upload URL has expired.");
    const auto id = state_.text("SELECT id FROM submission WHERE assetId = ?", {asset});
    return {requireStill("open", id.value_or("")), number};
}

// PUT /uploads/<asset>/<part>?expires=…&signature=…
Answer Submissions::putPart(const Call& call)
{
    auto lock = state_.lock();
    const auto [submission, number] = expectPart(call);
    const std::int64_t size = submission.sizeOfPart(number);
    checkPartFrame(call, size);
    // From now on, an earlier version of the part is being overwritten.
    state_.run("DELETE FROM part WHERE submissionId = ? AND number = ?", {submission.id, number});
    IncomingPart part(archiveFile(submission.id), (number - 1) * submission.partSize);
    lock.unlock();
    if (size > 0) call.readBody([&](std::string_view piece) { part.write(piece); });
    if (part.size() != size) throw ServiceError(400, "wrong_part_size", "The part broke off.");
    const std::string etag = part.finish();
    lock.lock();
    requireStill("open", submission.id);
    state_.run("INSERT OR REPLACE INTO part VALUES (?, ?, ?, ?)", {submission.id, number, size, etag});
    return {.contentType = "text/plain", .headers = {{"ETag", etag}}};
}

Answer Submissions::complete(const Call& call)
{
    auto lock = state_.lock();
    const Submission submission = own(call);
    lock.unlock();
    const RequestBody body(call, {"parts", "sha256"}, largestList);
    ListedParts parts;
    for (const RequestBody& part : body.objects("parts", {"partNumber", "etag"})) {
        parts.emplace_back(part.integer("partNumber"), part.text("etag"));
    }
    const std::string sha256 = body.text("sha256");
    if (!isSHA256(sha256)) throw ServiceError(422, "bad_sha256", "sha256 is not 64 lower-case hexadecimal digits.");
    lock.lock();
    beginChecking(submission.id, parts);
    lock.unlock();
    try {
        if (SHA256::hexDigestOfFile(archiveFile(submission.id)) != sha256) {
            throw ServiceError(422, "wrong_sha256", "The archive's SHA-256 does not match.");
        }
        const Submission reviewed = beginReview(submission, sha256);
        lock.lock();
        return Answer::of(statusJSON(reviewed));
    } catch (...) {
        if (!lock) lock.lock();
        requireStill("checking", submission.id); // an abort may have removed the file: say that instead
        state_.run("UPDATE submission SET status = 'open' WHERE id = ?", {submission.id});
        throw;
    }
}

/// Throws unless all parts are listed in order, each with the ETag that its upload returned.
void Submissions::beginChecking(const std::string& id, const ListedParts& parts)
{
    const Submission now = requireStill("open", id);
    if (static_cast<std::int64_t>(parts.size()) != now.partCount) {
        throw ServiceError(422, "bad_parts", fmt::format("{} parts are listed, not {}.", parts.size(), now.partCount));
    }
    std::int64_t next = 0;
    for (const auto& [number, etag] : parts) {
        if (number != ++next) throw ServiceError(422, "bad_parts", "The parts are not listed in order, each once.");
        if (!state_.number("SELECT 1 FROM part WHERE submissionId = ? AND number = ? AND etag = ?",
                           {id, number, etag})) {
            throw ServiceError(422, "bad_etag", fmt::format("Part {} has not arrived with that ETag.", number));
        }
    }
    state_.run("UPDATE submission SET status = 'checking' WHERE id = ?", {id});
}

Submissions::Submission Submissions::beginReview(const Submission& submission, const std::string& sha256)
{
    const ArchiveVerdict verdict = inspectArchive(archiveFile(submission.id));
    const auto lock = state_.lock();
    requireStill("checking", submission.id);
    state_.run(
        "UPDATE submission SET status = 'review', completedAt = ?, sha256 = ?, finding = ?, checkedStatus = ?,"
        " checkedReason = ? WHERE id = ?",
        {state_.now(), sha256, verdict.finding, verdict.asChecked.status, verdict.asChecked.reason, submission.id});
    return require(submission.id);
}

} // namespace vorn::sandbox
