#pragma once

#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMacCore/Client/InMemoryTokenStore.h"
#include "tests/support/MessagesFixture.h"
#include "tests/support/RefusingFileManager.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/async/ManualClock.h"
#include "tests/support/async/ManualExecutor.h"
#include "tests/support/log/CapturedLog.h"
#include "tests/support/service/HeldHTTPSession.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vorn::testing {

/// User defaults that last as long as the test.
class InMemoryDefaults final : public UserDefaults {
public:
    std::map<std::string, bool> booleans;
    std::map<std::string, std::string> texts;

    std::optional<std::string> text(const std::string& key) const override
    {
        return texts.contains(key) ? std::optional(texts.at(key)) : std::nullopt;
    }
    bool boolean(const std::string& key) const override;
    void setBoolean(const std::string& key, bool value) override { booleans[key] = value; }
    void setText(const std::string& key, const std::string& value) override { texts[key] = value; }
};

/// Records the calls to the desktop.
class RecordingWorkspace final : public Workspace {
public:
    std::vector<std::string> calls;     ///< "open <url>", "reveal", "relaunch"
    std::optional<std::string> refused; ///< the URL that nothing can open

    bool open(const std::string& url) override;
    void revealApplication() override { calls.emplace_back("reveal"); }
    void relaunch() override { calls.emplace_back("relaunch"); }
};

/// Counts the signals of a model.
class Notifications : public QObject {
public:
    explicit Notifications(const AppModel& model);

    int of(const std::string& signal) const; ///< by name: "stepChanged"
    const std::map<std::string, int>& counts() const { return counts_; }
    void forget() { counts_.clear(); }

private:
    std::map<std::string, int> counts_;
};

/// A model in virtual time: nothing happens except what the test answers, runs or waits for. Threads: one.
class ModelFixture {
public:
    static constexpr const char* links = "POST /api/v1/auth/device-links";
    static constexpr const char* polls = "POST /api/v1/auth/device-links/poll";
    static constexpr const char* quest = "GET /api/v1/desktop/nimbrel";
    static constexpr const char* creates = "POST /api/v1/desktop/nimbrel/submissions";
    static constexpr const char* puts = "PUT /part/1";
    static constexpr const char* partURLs = "POST /api/v1/desktop/nimbrel/submissions/sub-1/assets/asset-1/part-urls";
    static constexpr const char* completes = "POST /api/v1/desktop/nimbrel/submissions/sub-1/assets/asset-1/complete";
    static constexpr const char* aborts = "POST /api/v1/desktop/nimbrel/submissions/sub-1/abort";
    static constexpr const char* review = "GET /api/v1/desktop/nimbrel/submissions/sub-1";
    static constexpr const char* revokes = "POST /api/v1/auth/desktop/logout";
    static constexpr const char* refreshes = "POST /api/v1/auth/desktop/refresh";

    /// With a Messages database of one conversation with the assistant, in three messages.
    ModelFixture();
    ~ModelFixture();
    ModelFixture(ModelFixture&&) = delete;

    TemporaryFolder folder;
    CapturedLog log;
    ManualClock clock;
    ManualExecutor background;
    MainContext context;
    std::shared_ptr<HeldHTTPSession> http = std::make_shared<HeldHTTPSession>();
    std::shared_ptr<InMemoryTokenStore> tokens = std::make_shared<InMemoryTokenStore>();
    std::shared_ptr<TokenStore> store = tokens; ///< what the model uses
    InMemoryDefaults defaults;
    RecordingWorkspace workspace;
    RefusingFileManager files;
    Clock::Duration shortestUpload{}; ///< passed to the model
    MessagesFixture messages;

    // Starting points.

    /// Called to begin the first step, instead of `AppModel::start`: for example, to make a window that begins it.
    std::function<void()> onLaunched;

    /// Makes the model, and begins its first step. At most once per fixture.
    AppModel& launch();
    /// The same with a session in the store.
    AppModel& launchSignedIn(bool consented = true);
    /// Signed in on the find screen, the chat found, every signal forgotten.
    AppModel& launchFound();
    /// Uploading: the submission is opened and its only part waits to be taken.
    AppModel& launchUploading();
    /// On the done screen, with the submission "sub-1" under review.
    AppModel& launchDone();

    /// On the link screen: links this Mac to the user of `session`, who confirms after two seconds.
    void linkAs(const StoredSession& session);

    /// Ends every job and the model, as the program's end does.
    void quit();

    AppModel& model() { return *model_; }
    const AppModel& model() const { return *model_; }
    Notifications& changes() { return *changes_; }

    /// Runs the main thread alone until it has nothing to do.
    void run() { context.runUntilIdle(); }
    /// Runs the background too.
    void runAll();
    void advance(Clock::Duration duration) { clock.advance(duration, context); }

    // The service. Each reply fails the test if no such request waits, and runs the main thread.

    void answer(const std::string& request, const std::string& body = "{}", int status = 200);
    void refuse(const std::string& request, int status) { answer(request, "", status); }
    void fail(const std::string& request, URLError::Code code);
    bool isWaiting(const std::string& request) const { return http->waiting(request).has_value(); }
    std::size_t asked(const std::string& request) const; ///< how many such requests were sent, answered or not

    // Messages.

    std::filesystem::path database() const { return folder / "chat.db"; }
    /// Sets the result of `access`; only the probe is affected.
    void setAccess(FullDiskAccessStatus status);
    /// The archives and snapshots in the temporary directory.
    std::vector<std::string> leftovers() const;

private:
    std::unique_ptr<AppModel> model_;
    std::unique_ptr<Notifications> changes_;
};

// Documents of the service.

/// The payload of the service's QR code, as long as a real one.
inline constexpr const char* linkPayload =
    "vorn://link?code=qr-canary-1-5f0c1d7be2a94836a1c07d5e9b42f3681d6e0a7c94b25f83e190";

std::string linkJSON(std::int64_t pollIntervalMs = 2000, const std::string& expiresAt = "2026-03-01T09:15:00Z",
                     const std::string& payload = linkPayload);
std::string pollJSON(const std::string& status);
std::string approvalJSON(const StoredSession& session);
std::string questJSON(const std::string& status = "available", const std::string& handles = R"("+15550102030")",
                      std::int64_t maxBytes = 5'000'000'000);
std::string submissionJSON(const std::string& status);
std::string openedJSON();
std::string partURLsJSON(); ///< a fresh URL for the only part

} // namespace vorn::testing
