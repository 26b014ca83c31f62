#pragma once

#include "VornMacCore/Client/MultipartUploader.h"
#include "VornMacCore/Client/PartReader.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vorn {

/// Sends the parts of a submission's one file: keeps the URL of each and collects the answers.
class PartUpload {
public:
    /// `submission` must have an asset.
    PartUpload(MultipartUploader::Services services, PartPlan plan, const SubmissionUpload& submission,
               MultipartUploader::Progress progress);

    /// Sends every part of `file`, and tells the service their tags in order. This object must outlive the call.
    Async<SubmissionStatus> sendAndComplete(std::filesystem::path file, std::string sha256);

private:
    using Body = std::shared_ptr<const HTTPBody>;

    Async<std::vector<CompletedPart>> sendAll(std::filesystem::path file);
    Async<CompletedPart> send(std::int64_t part, Body body);
    std::optional<URL> knownURL(std::int64_t part) const;
    Async<> fetchWindow(std::int64_t part);
    Async<HTTPResponse> put(std::int64_t part, URL url, Body body) const;
    void report(std::int64_t bytesSent) const;

    MultipartUploader::Services services_;
    PartPlan plan_;
    std::string submissionId_;
    UploadAsset asset_;
    MultipartUploader::Progress progress_;
    std::map<std::int64_t, std::string> urls_; ///< by part number
};

} // namespace vorn
