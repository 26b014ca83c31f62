#pragma once

#include "VornMacCore/Client/MultipartUploader.h"
#include "VornMacCore/Client/PartReader.h"

#include <map>
#include <string>
#include <vector>

namespace vorn {

/// Sends the parts of one submission: keeps the URL of each and collects the answers.
class PartUpload {
public:
    PartUpload(VornAPI api, std::shared_ptr<HTTPSession> transfer, BackgroundExecutor& background, PartPlan plan,
               std::string submissionId, UploadAsset asset, MultipartUploader::Progress progress);

    /// Sends every part of `file` and returns their tags in order. Must outlive the call.
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
