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

/// Facts needed before the first request.
struct Measured {
    std::int64_t size = 0;
    std::string sha256;
};

Measured measure(const std::filesystem::path& file, const CancelFlag& cancel)
{
    return {FileManager::standard().fileSize(file), SHA256::hexDigestOfFile(file, &cancel)};
}

Async<> abort(VornAPI api, std::string submissionId)
{
    try {
        co_await api.abortSubmission(submissionId);
    } catch (const std::exception& error) {
        // Not thrown: the service drops an unfinished submission by itself, and the user must see why the upload
        // failed.
        Log(bundleIdentifier(), "upload").error(std::string("abort after a failed upload failed: ") + error.what());
    }
}

} // namespace

MultipartUploader::MultipartUploader(VornAPI api, std::shared_ptr<HTTPSession> transfer, BackgroundExecutor& background,
                                     std::int64_t partSize)
    : services_{std::move(api), std::move(transfer), &background}, partSize_(partSize)
{
}

Async<SubmissionStatus> MultipartUploader::upload(std::filesystem::path file, CreateSubmissionRequest request,
                                                  Progress progress) const
{
    return run(*this, std::move(file), std::move(request), std::move(progress));
}

Async<SubmissionStatus> MultipartUploader::run(MultipartUploader self, std::filesystem::path file,
                                               CreateSubmissionRequest request, Progress progress)
{
    const auto measureFile = [&file](const CancelFlag& cancel) { return measure(file, cancel); };
    const Measured archive = co_await onBackground(self.services_.background, measureFile);
    const PartPlan plan(archive.size, self.partSize_);
    request.sizeBytes = archive.size;
    request.partCount = plan.partCount();

    const SubmissionUpload submission = co_await self.services_.api.createSubmission(request);
    if (submission.assets.empty()) throw UploadError(UploadError::NoAsset{});
    PartUpload parts(self.services_, plan, submission, std::move(progress));
    std::exception_ptr failure;
    try {
        co_return co_await parts.sendAndComplete(std::move(file), archive.sha256);
    } catch (...) {
        failure = std::current_exception(); // a handler cannot await
    }
    co_await shielded(abort(self.services_.api, submission.submissionId));
    std::rethrow_exception(failure);
}

} // namespace vorn
