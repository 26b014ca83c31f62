#include "VornMacCore/Client/MultipartUploader.h"

#include "Platform/Base/FileManager.h"
#include "Platform/Base/Log.h"
#include "Platform/Base/SHA256.h"
#include "VornMacCore/Client/PartUpload.h"
#include "VornMacCore/Wire/Application.h"

#include <exception>
#include <utility>

namespace vorn {
namespace {

/// What must be known before the first request.
struct Measured {
    std::int64_t size = 0;
    std::string sha256;
};

Measured measure(const std::filesystem::path& file, const CancelFlag& cancel)
{
    return {FileManager::standard().fileSize(file), SHA256::hexDigestOfFile(file, &cancel)};
}

Async<SubmissionStatus> sendAndComplete(VornAPI api, std::shared_ptr<PartUpload> parts, std::filesystem::path file,
                                        std::string submissionId, std::string assetId, std::string sha256)
{
    const CompleteAssetRequest complete{co_await parts->sendAll(std::move(file)), std::move(sha256)};
    co_return co_await api.completeAsset(submissionId, assetId, complete);
}

Async<> abort(VornAPI api, std::string submissionId)
{
    try {
        co_await api.abortSubmission(submissionId);
    } catch (const std::exception& error) {
        // The service drops an unfinished submission on its own; the user needs to know why the upload failed.
        Log(bundleIdentifier(), "upload").error(std::string("abort after a failed upload failed: ") + error.what());
    }
}

} // namespace

MultipartUploader::MultipartUploader(VornAPI api, std::shared_ptr<HTTPSession> transfer, BackgroundExecutor& background,
                                     std::int64_t partSize)
    : api_(std::move(api)), transfer_(std::move(transfer)), background_(&background), partSize_(partSize)
{
}

Async<SubmissionStatus> MultipartUploader::upload(std::filesystem::path file, std::string termsVersion,
                                                  std::optional<DeviceSignals> device, Progress progress) const
{
    return run(*this, std::move(file), std::move(termsVersion), std::move(device), std::move(progress));
}

Async<SubmissionStatus> MultipartUploader::run(MultipartUploader self, std::filesystem::path file,
                                               std::string termsVersion, std::optional<DeviceSignals> device,
                                               Progress progress)
{
    const auto measureFile = [&file](const CancelFlag& cancel) { return measure(file, cancel); };
    const Measured archive = co_await onBackground(self.background_, measureFile);
    const PartPlan plan(archive.size, self.partSize_);

    SubmissionUpload submission = co_await self.api_.createSubmission(
        {std::move(termsVersion), archive.size, plan.partCount(), std::move(device)});
    if (submission.assets.empty()) throw UploadError(UploadError::NoAsset{});
    const UploadAsset& asset = submission.assets.front();
    const auto parts = std::make_shared<PartUpload>(self.api_, self.transfer_, *self.background_, plan,
                                                    submission.submissionId, asset, std::move(progress));
    std::exception_ptr failure;
    try {
        co_return co_await sendAndComplete(self.api_, parts, std::move(file), submission.submissionId, asset.assetId,
                                           archive.sha256);
    } catch (...) {
        failure = std::current_exception(); // a handler cannot await
    }
    co_await shielded(abort(self.api_, submission.submissionId));
    std::rethrow_exception(failure);
}

} // namespace vorn
