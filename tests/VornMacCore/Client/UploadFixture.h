#pragma once

#include "Platform/Async/BackgroundPool.h"
#include "Platform/Async/MainContext.h"
#include "VornMacCore/Client/APIError.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "VornMacCore/Client/MultipartUploader.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/http/LoopbackServer.h"

#include <chrono>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace vorn {

// Printers of values for failed comparisons.
inline void PrintTo(const UploadError& error, std::ostream* out)
{
    *out << error.what();
}
inline void PrintTo(const APIError& error, std::ostream* out)
{
    *out << error.what();
}
inline void PrintTo(const UploadProgress& progress, std::ostream* out)
{
    *out << progress.bytesSent << " of " << progress.totalBytes;
}

namespace testing {

// The requests of an upload as `UploadFixture::requests` returns them.
inline const std::string opening = "POST /api/v1/desktop/nimbrel/submissions";
inline const std::string askingForURLs = opening + "/s1/assets/a1/part-urls";
inline const std::string completing = opening + "/s1/assets/a1/complete";
inline const std::string aborting = opening + "/s1/abort";
inline const std::string refreshing = "POST /api/v1/auth/desktop/refresh";
std::string putting(int part);

/// One upload of a file over a real HTTP session to a real server that plays the service and the storage. Tests set its
/// answers, in the order of the requests; one request too many fails them.
class UploadFixture {
public:
    explicit UploadFixture(std::string_view content = "a file", std::int64_t partSize = 100);
    ~UploadFixture();
    UploadFixture(UploadFixture&&) = delete;

    /// The presigned URL of a part on the server.
    std::string urlOf(int part) const;
    std::vector<std::string> urlsOf(int first, int last) const;

    // The server's answers, each to the next request.
    void opens(const std::vector<std::string>& urls); ///< a submission, with the URLs of the parts from 1 on
    void takesPart(const std::string& tag = "\"tag\"");
    void answersPart(int status, HeaderList headers = {});
    void givesURLs(int first, const std::vector<std::string>& urls);
    void completes();
    void aborts();

    using Milliseconds = std::chrono::duration<double, std::milli>;
    struct CancelTimes {
        std::chrono::steady_clock::time_point begin;
        Milliseconds took{};
    };
    /// For handlers: cancels the upload on its own thread, and waits until that has been done.
    CancelTimes cancelAndWait();
    /// A handler that sends nothing, cancels the upload once `bytes` of the request's body have arrived, and reads on
    /// until the client has disconnected.
    LoopbackServer::Handler cancels(std::size_t bytes = 0);
    /// The time from that cancel to the end of the connection. Waits for that end; call at most once.
    Milliseconds timeToClose() { return timeToClose_.get_future().get(); }

    /// Uploads the file and returns how that ended.
    SubmissionStatus upload();
    /// Uploads the file and returns the error with which that ends.
    template <class Error>
    Error uploadFails()
    {
        try {
            upload();
        } catch (const Error& error) {
            return error;
        }
        throw std::logic_error("the upload succeeded");
    }

    // The same step by step.
    void start();
    void cancel() { task.cancel(); }
    void finish(); ///< runs until the upload has ended
    SubmissionStatus result() const;

    /// What the server received: "METHOD target" each.
    std::vector<std::string> requests() const;
    nlohmann::json bodyOf(std::size_t request) const;
    std::vector<UploadProgress> reports() const;

    TemporaryFolder folder;
    std::filesystem::path file = folder / "archive.zip";
    std::int64_t partSize;
    std::optional<DeviceSignals> device = DeviceSignals{"Europe/Berlin", "de-DE"};
    std::function<void(const UploadProgress&)> onProgress; ///< called after the report is kept
    std::shared_ptr<InMemoryTokenStore> store =
        std::make_shared<InMemoryTokenStore>(StoredSession{"canary-token", "canary-refresh", "user-1", "Ada"});
    MainContext context;
    BackgroundPool pool{2};

private:
    struct End {
        std::optional<SubmissionStatus> status;
        std::exception_ptr error;
    };
    static Async<> keepEnd(Async<SubmissionStatus> upload, std::shared_ptr<End> end);

    std::shared_ptr<End> end_;
    mutable std::mutex mutex_; ///< guards reports_
    std::vector<UploadProgress> reports_;
    std::promise<Milliseconds> timeToClose_;

public:
    LoopbackServer server; // last: its handlers use what is above, and end with it
    std::shared_ptr<HTTPSession> session = HTTPSession::make();
    std::optional<VornAPI> api;
    Task task;
};

/// The answer that opens a submission with one asset.
Answer submissionAnswer(const std::vector<std::string>& urls);

} // namespace testing
} // namespace vorn
