#pragma once

#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "NimbrelExportKit/Records/ExportRecords.h"
#include "Platform/Base/Log.h"
#include "VornMac/Model/Announcements.h"
#include "VornMac/Model/AppServices.h"
#include "VornMac/Model/Phases.h"
#include "VornMac/Model/Step.h"
#include "VornMacCore/Quest/QuestAvailability.h"
#include "VornMacCore/Upload/UploadProgress.h"

#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QObject>

namespace vorn {

struct ArchiveFile;

/// The one controller of the application: all state that the screens show, and every long job. It alone writes that
/// state; screens read it and call its operations. A property's signal is sent when its value has changed, and only
/// then; what changes together is told of when all of it has changed, the step first.
/// Threads: the context's own; signals too. Shut the context down before the model goes: its jobs use it.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// What is found on this Mac, in memory that is freed in the background: a million messages take their time.
    using Export = std::shared_ptr<const NimbrelExportResult>;

    /// Restores the stored session and chooses the first step, without beginning its work.
    explicit AppModel(AppServices services);

    // State.

    Step step() const noexcept { return step_; }
    const std::optional<StoredSession>& session() const noexcept { return session_; }

    const LinkPhase& linkPhase() const noexcept { return linkPhase_; }
    const std::optional<std::string>& qrPayload() const noexcept { return qrPayload_; } ///< a secret, for the phone
    std::optional<Instant> linkExpiresAt() const noexcept { return linkExpiresAt_; }

    bool understandsUpload() const noexcept { return understandsUpload_; }
    bool agreesToShare() const noexcept { return agreesToShare_; }
    bool hasAcceptedConsent() const;

    FullDiskAccessStatus access() const noexcept { return access_; }

    const ScanPhase& scanPhase() const noexcept { return scanPhase_; }
    const std::optional<NimbrelState>& nimbrel() const noexcept { return nimbrel_; }
    const Export& exportResult() const noexcept { return export_; } ///< null without one
    /// Of `exportResult`, counted in the background: a million messages take their time.
    std::optional<NimbrelExportStats> exportStatistics() const;
    std::optional<QuestAvailability> availability() const; ///< now; nothing before the quest is known
    bool canUpload() const;

    const UploadPhase& uploadPhase() const noexcept { return uploadPhase_; }
    const UploadProgress& uploadProgress() const noexcept { return uploadProgress_; } ///< in bytes; `uploadPhase` tells
    const std::optional<SubmissionStatus>& submission() const noexcept { return submission_; }
    std::string reward() const; ///< "$12.50", else "the quest reward"

    /// Counts the sessions that have begun and ended.
    std::int64_t sessionGeneration() const noexcept { return sessionGeneration_; }

    // Steps.

    /// Begins the work of the step that was chosen at the start.
    void start();
    /// Stops the work of the current step and begins that of `target`, which may be the same: that tries again.
    void go(Step target);

    void setUnderstandsUpload(bool value);
    void setAgreesToShare(bool value);
    /// Does nothing unless both boxes are ticked and a user is signed in.
    void acceptConsent();

    void signOut();
    /// Forgets the user's session, here and in the store, and gives what was stored. Another user's stays stored: a
    /// program beside this one has linked it.
    std::optional<StoredSession> endSession();

    // Jobs. Each replaces the one of its kind that is running.

    void startLinking();
    void startAccessProbe();
    void scan();
    /// Does nothing unless `canUpload`.
    void upload();
    void watchSubmission(const std::string& id);

    // The access screen.

    void openFullDiskAccessSettings();
    void revealAppInFinder();
    void relaunch();

    /// The line that tells the user about `error`.
    static std::string describe(const std::exception& error);

signals:
    void stepChanged();
    void sessionChanged();
    void linkPhaseChanged();
    void qrPayloadChanged();
    void linkExpiresAtChanged();
    void understandsUploadChanged();
    void agreesToShareChanged();
    void accessChanged();
    void scanPhaseChanged();
    void nimbrelChanged();
    void exportResultChanged();
    void uploadPhaseChanged();
    void submissionChanged();
    /// The review is no longer watched: it has ended, or takes too long. Not sent when the session ended before.
    void reviewWatchEnded();

private:
    using Signal = void (AppModel::*)();

    /// What a step begins when it is entered and stops when it is left.
    struct StepWork {
        Step step;
        void (AppModel::*enter)();
        void (AppModel::*leave)();
    };
    static const StepWork& workOf(Step step);

    template <class Value>
    void assign(Value& property, Value value, Signal changed, Announcements::Place place = Announcements::Place::last)
    {
        if (property == value) return;
        Value before = std::exchange(property, std::move(value));
        announcements_.changed(property, std::move(before), [this, changed] { emit(this->*changed)(); }, place);
    }
    /// What is assigned while the result lives is told of afterwards.
    Announcements::Transition transition() { return Announcements::Transition(announcements_); }

    /// What was begun for the signed-in user. All of it ends with the session.
    struct SessionJobs {
        Task prefetch;
        Task chat; ///< a scan or an upload
        Task review;
        std::shared_ptr<AppModel*> progress; ///< where the upload reports to, from other threads; expires with it

        void cancelChat();
        void cancel();
    };
    Task running(Async<> job) { return {*services_.context, std::move(job)}; }

    void leave(Step step);
    void enter(Step step);
    FullDiskAccessStatus probeAccess() const;
    static std::string consentKey(const StoredSession& session);
    /// Whether `error` was about the session, and is dealt with. Only for a job that is not cancelled: the error of one
    /// that began in an earlier session must not end this one.
    bool handleSessionError(const std::exception& error);
    /// Ends the session here alone.
    void leaveSession();
    /// Stops what was begun for the user, and forgets what it found.
    void dropUser();
    /// The client of the user of `session` alone.
    VornAPI pinnedTo(const StoredSession& session) const;

    void stopLinking();
    void showCode(const DeviceLink& link);
    /// Nothing of a code is shown once it is not polled any more.
    void endCode(LinkPhase next);
    Async<> runLinkLoop();
    struct LinkOutcome;
    Async<LinkOutcome> linkOnce();
    Async<LinkOutcome> poll(DeviceLink link);
    void signedIn(const DesktopSession& session);

    void stopAccessProbe() { accessTask_.cancel(); }
    void stopReviewWatch() { jobs_.review.cancel(); }

    void prefetchNimbrel();
    Async<> runPrefetch(VornAPI api);
    Async<> runAccessProbe();
    Async<> runScan(VornAPI api);
    Async<> findChat(VornAPI api);
    struct FoundChat;
    void showFound(FoundChat found);
    Async<FoundChat> readMessages(std::vector<std::string> handles);
    void showScanFailure(const std::exception& error);

    Async<> runUpload(VornAPI api, Export content);
    Async<> packAndSend(VornAPI api, Export content);
    Async<ArchiveFile> pack(Export content, std::filesystem::path path);
    Async<SubmissionStatus> send(VornAPI api, std::filesystem::path archive);
    void reportProgress(const UploadProgress& progress);
    void finishUpload(const SubmissionStatus& status);
    Async<> runReviewWatch(VornAPI api, std::string id);
    /// Says whether the session is still there at its end.
    Async<bool> watch(VornAPI api, std::string id);
    Async<bool> pollSubmission(VornAPI api, std::string id);

    AppServices services_;
    Log log_;
    Announcements announcements_;

    Step step_ = Step::link;
    std::optional<StoredSession> session_;
    LinkPhase linkPhase_;
    std::optional<std::string> qrPayload_;
    std::optional<Instant> linkExpiresAt_;
    bool understandsUpload_ = false;
    bool agreesToShare_ = false;
    FullDiskAccessStatus access_;
    ScanPhase scanPhase_;
    std::optional<NimbrelState> nimbrel_;
    Export export_;
    std::optional<NimbrelExportStats> statistics_; ///< of the last one
    UploadPhase uploadPhase_;
    UploadProgress uploadProgress_;
    std::optional<SubmissionStatus> submission_;

    std::int64_t sessionGeneration_ = 0;
    std::optional<Clock::Duration> lastCodeRequest_;

    Task linkTask_, accessTask_;
    SessionJobs jobs_;
};

} // namespace vorn
