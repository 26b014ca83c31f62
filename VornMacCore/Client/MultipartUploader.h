#pragma once

#include "Platform/Async/BackgroundExecutor.h"
#include "Platform/HTTP/HTTPSession.h"
#include "VornMacCore/Client/PartPlan.h"
#include "VornMacCore/Client/UploadError.h"
#include "VornMacCore/Client/UploadProgress.h"
#include "VornMacCore/Client/VornAPI.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>

namespace vorn {

/// Uploads one archive as a submission: its parts go to presigned URLs, strictly one after another, and the service is
/// told the archive's SHA-256 and each part's tag. A submission that was opened ends in one of two ways: it is
/// completed, or an abort is sent, even when the upload is cancelled. Threads: any. Make one for each upload.
class MultipartUploader {
public:
    /// Called from any thread, many times; must not throw. `bytesSent` grows, except when a part is sent again.
    using Progress = std::function<void(const UploadProgress&)>;

    /// Sends the parts with `transfer`, which reads them on its own thread as they leave. The file is hashed and opened
    /// on `background`, which must outlive the upload.
    MultipartUploader(VornAPI api, std::shared_ptr<HTTPSession> transfer, BackgroundExecutor& background,
                      std::int64_t partSize = PartPlan::defaultPartSize);

    /// Opens a submission with `request`, whose size and number of parts are filled in here, and sends `file`. Returns
    /// the submission's status after the file has arrived. Throws `UploadError`, `APIError`, `URLError`,
    /// `std::filesystem::filesystem_error` for the file, `Cancelled`. The file is never held in memory.
    Async<SubmissionStatus> upload(std::filesystem::path file, CreateSubmissionRequest request,
                                   Progress progress) const;

    /// The services of an upload.
    struct Services {
        VornAPI api;
        std::shared_ptr<HTTPSession> transfer;
        BackgroundExecutor* background;
    };

private:
    static Async<SubmissionStatus> run(MultipartUploader self, std::filesystem::path file,
                                       CreateSubmissionRequest request, Progress progress);

    Services services_;
    std::int64_t partSize_;
};

} // namespace vorn
