#include "VornSandbox/Service/ServiceError.h"
#include "VornSandbox/Service/Submissions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

// The upload half of `Submissions`: part URLs, parts, and joining them.

namespace vorn::sandbox {
namespace {

/// A part number without leading zeros or signs; 0 when `text` is none.
std::int64_t partNumber(const std::string& text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && std::to_string(number) == text ? number : 0;
}

ServiceError notOpen(const Submission& submission)
{
    return {409, "not_open", fmt::format("The submission takes no parts any more: it is {}.", submission.status)};
}

bool isSHA256(const std::string& text)
{
    return text.size() == 64 && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

} // namespace

std::vector<Submissions::PartURL> Submissions::partURLs(const Submission& submission, std::int64_t from,
                                                        std::int64_t count) const
{
    if (submission.status != "open") throw notOpen(submission);
    const auto lock = state_.lock();
    std::vector<PartURL> urls;
    for (std::int64_t part = from; part < from + count; ++part) {
        urls.push_back({.number = part, .path = signer_.path(submission.assetId, part)});
    }
    return urls;
}

Submissions::ExpectedPart Submissions::expectPart(const std::string& assetId, const std::string& number,
                                                  const std::string& expires, const std::string& signature) const
{
    const auto lock = state_.lock();
    const std::int64_t part = partNumber(number);
    signer_.check(assetId, part, expires, signature);
    std::string id;
    state_.query("SELECT id FROM submission WHERE assetId = ?", {assetId},
                 [&](const SQLiteRow& row) { id = row.text(0).value_or(""); });
    const Submission submission = require(id);
    if (submission.status != "open") throw notOpen(submission);
    if (part < 1 || part > submission.partCount) throw ServiceError(404, "unknown_part", "There is no such part.");
    return {.submission = submission, .number = part, .size = submission.sizeOfPart(part)};
}

std::unique_ptr<IncomingPart> Submissions::receive(const ExpectedPart& part)
{
    const auto lock = state_.lock(); // its folder may be going away just now
    const Submission submission = require(part.submission.id);
    if (submission.status != "open") throw notOpen(submission);
    return files_.receivePart(submission.id);
}

std::string Submissions::keep(const ExpectedPart& part, IncomingPart& received)
{
    const std::string etag = received.finish();
    const auto lock = state_.lock();
    const Submission submission = require(part.submission.id);
    if (submission.status != "open") throw notOpen(submission);
    files_.keepPart(received, submission.id, part.number);
    state_.run("INSERT OR REPLACE INTO part VALUES (?, ?, ?, ?)", {submission.id, part.number, received.size(), etag});
    return etag;
}

Submission Submissions::complete(const Submission& submission, const std::vector<ReceivedPart>& parts,
                                 const std::string& sha256)
{
    beginAssembling(submission, parts, sha256);
    try {
        const auto assembled = files_.assemble(submission.id, submission.partCount);
        if (assembled.size != submission.sizeBytes) {
            throw ServiceError(422, "wrong_size",
                               fmt::format("{} bytes arrived, not {}.", assembled.size, submission.sizeBytes));
        }
        if (assembled.sha256 != sha256)
            throw ServiceError(422, "wrong_sha256", "The archive's SHA-256 is another one.");
        return beginReview(submission, sha256, inspect_(files_.archive(submission.id)));
    } catch (const std::filesystem::filesystem_error&) {
        reopen(submission.id); // throws when an abort has taken the files away, which is no fault of the disk
        throw;
    } catch (...) {
        reopen(submission.id);
        throw;
    }
}

void Submissions::beginAssembling(const Submission& submission, const std::vector<ReceivedPart>& parts,
                                  const std::string& sha256)
{
    if (!isSHA256(sha256)) throw ServiceError(422, "bad_sha256", "sha256 is not 64 lower-case hexadecimal digits.");
    const auto lock = state_.lock();
    const Submission now = require(submission.id);
    if (now.status != "open") throw notOpen(now);
    if (static_cast<std::int64_t>(parts.size()) != now.partCount) {
        throw ServiceError(422, "bad_parts", fmt::format("{} parts are listed, not {}.", parts.size(), now.partCount));
    }
    const std::vector<ReceivedPart> received = partsOf(state_, now.id);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].number != static_cast<std::int64_t>(i) + 1) {
            throw ServiceError(422, "bad_parts", "The parts are not listed in order, each once.");
        }
        if (std::ranges::find(received, parts[i]) == received.end()) {
            throw ServiceError(422, "bad_etag", fmt::format("Part {} has not arrived with that ETag.", i + 1));
        }
    }
    state_.run("UPDATE submission SET status = 'assembling' WHERE id = ?", {now.id});
}

Submission Submissions::beginReview(const Submission& submission, const std::string& sha256,
                                    const ArchiveVerdict& verdict)
{
    const auto lock = state_.lock();
    const Submission now = require(submission.id);
    if (now.status != "assembling") throw notOpen(now);
    files_.dropParts(submission.id);
    state_.run("UPDATE submission SET status = 'review', completedAt = ?, sha256 = ?, finding = ?, checkedStatus = ?,"
               " checkedReason = ? WHERE id = ?",
               {toMilliseconds(state_.now()), sha256, verdict.finding, verdict.asChecked.status,
                verdict.asChecked.reason, submission.id});
    return require(submission.id);
}

void Submissions::reopen(const std::string& id)
{
    const auto lock = state_.lock();
    const Submission now = require(id);
    if (now.status != "assembling") throw notOpen(now);
    state_.run("UPDATE submission SET status = 'open' WHERE id = ?", {id});
}

} // namespace vorn::sandbox
