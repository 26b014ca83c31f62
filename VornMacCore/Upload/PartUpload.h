#pragma once

#include "VornMacCore/Upload/MultipartUploader.h"
#include "VornMacCore/Upload/PartReader.h"

#include <map>
#include <string>
#include <vector>

namespace vorn {

/// The parts of one submission on their way: which URL each goes to, and what came back.
class PartUpload {
public:
    PartUpload(VornAPI api, std::shared_ptr<HTTPSession> transfer, BackgroundExecutor& background, PartPlan plan,
               std::string submissionId, UploadAsset asset, MultipartUploader::Progress progress);

    /// Sends every part of `file` and gives their tags in order. This must live until then.
    Async<std::vector<CompletedPart>> sendAll(std::filesystem::path file);

private:
    using Body = std::shared_ptr<const HTTPBody>;

    Async<CompletedPart> send(std::int64_t part, Body body);
    Async<URL> urlOf(std::int64_t part, bool* refreshed);
    Async<> fetchWindow(std::int64_t part);
    Async<HTTPResponse> put(std::int64_t part, URL url, Body body) const;
    void report(std::int64_t bytesSent) const;

    VornAPI api_;
    std::shared_ptr<HTTPSession> transfer_;
    BackgroundExecutor* background_;
    PartPlan plan_;
    std::string submissionId_;
    UploadAsset asset_;
    MultipartUploader::Progress progress_;
    std::map<std::int64_t, std::string> urls_; ///< by part number
};

} // namespace vorn
