#include "VornMacCore/Client/PartUpload.h"

#include "VornMacCore/Client/HTTPAnswer.h"

#include <chrono>
#include <optional>
#include <utility>

namespace vorn {
namespace {

using namespace std::chrono_literals;

/// Returns the URL if a part of the archive may be sent there. Any other counts as missing: the archive leaves this
/// machine only encrypted, and a part URL never carries user info.
std::optional<URL> acceptablePartURL(const std::string& text)
{
    auto url = URL::parse(text);
    if (!url || !url->isSecureOrLocal() || url->hasUserInfo()) return std::nullopt;
    return url;
}

} // namespace

PartUpload::PartUpload(MultipartUploader::Services services, PartPlan plan, const SubmissionUpload& submission,
                       MultipartUploader::Progress progress)
    : services_(std::move(services)), plan_(plan), submissionId_(submission.submissionId),
      asset_(submission.assets.front()), progress_(std::move(progress))
{
    for (const PresignedPart& part : asset_.parts) urls_.insert_or_assign(part.partNumber, part.url);
}

Async<SubmissionStatus> PartUpload::sendAndComplete(std::filesystem::path file, std::string sha256)
{
    const CompleteAssetRequest complete{co_await sendAll(std::move(file)), std::move(sha256)};
    co_return co_await services_.api.completeAsset(submissionId_, asset_.assetId, complete);
}

Async<std::vector<CompletedPart>> PartUpload::sendAll(std::filesystem::path file)
{
    const auto openFile = [&file, this](const CancelFlag&) { return PartReader(std::move(file), plan_); };
    const PartReader reader = co_await onBackground(services_.background, openFile);
    std::vector<CompletedPart> completed;
    for (std::int64_t part = 1; part <= plan_.partCount(); ++part) {
        co_await checkCancellation();
        completed.push_back(co_await send(part, reader.read(part)));
    }
    co_return completed;
}

Async<CompletedPart> PartUpload::send(std::int64_t part, Body body)
{
    const auto sentAfterwards = plan_.range(part).begin + body->size();
    for (bool isFresh = false;; isFresh = true) { // at most one fresh URL for each part
        auto url = knownURL(part);
        const bool isMissing = !url;
        HTTPResponse response;
        if (url) response = co_await put(part, *std::move(url), body);
        const bool mayHaveExpired = response.status == 403;
        if (!isFresh && (isMissing || mayHaveExpired)) {
            co_await fetchWindow(part);
            continue;
        }
        if (!isSuccess(response.status)) throw UploadError(UploadError::PartRefused{part, response.status});
        const auto tag = response.header("ETag");
        if (!tag || tag->empty()) throw UploadError(UploadError::MissingETag{part});
        report(sentAfterwards);
        co_return CompletedPart{part, *tag};
    }
}

std::optional<URL> PartUpload::knownURL(std::int64_t part) const
{
    const auto known = urls_.find(part);
    return known != urls_.end() ? acceptablePartURL(known->second) : std::nullopt;
}

Async<> PartUpload::fetchWindow(std::int64_t part)
{
    const PartPlan::Window window = plan_.window(part);
    const PartUrls fresh = co_await services_.api.partUrls(submissionId_, asset_.assetId, window.first, window.count);
    for (const PresignedPart& each : fresh.parts) urls_.insert_or_assign(each.partNumber, each.url);
}

Async<HTTPResponse> PartUpload::put(std::int64_t part, URL url, Body body) const
{
    const auto onBodyProgress = [progress = progress_, begin = plan_.range(part).begin,
                                 total = plan_.totalSize](std::int64_t bytesSent) {
        if (progress) progress({begin + bytesSent, total});
    };
    return httpAnswer(services_.transfer, {
                                              .method = HTTPRequest::Method::put,
                                              .url = std::move(url),
                                              .headers = {},
                                              .body = std::move(body),
                                              .inactivityLimit = 120s,
                                              .onBodyProgress = onBodyProgress,
                                          });
}

void PartUpload::report(std::int64_t bytesSent) const
{
    if (progress_) progress_({bytesSent, plan_.totalSize});
}

} // namespace vorn
