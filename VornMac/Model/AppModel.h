#pragma once

#include "NimbrelExportKit/Messages/ExportRecords.h"
#include "NimbrelExportKit/Messages/FullDiskAccess.h"
#include "Platform/Base/Log.h"
#include "Platform/Keychain/KeychainError.h"
#include "VornMac/Model/Announcements.h"
#include "VornMac/Model/AppServices.h"
#include "VornMac/Text/Phases.h"
#include "VornMac/Text/Step.h"
#include "VornMacCore/Client/UploadProgress.h"
#include "VornMacCore/Wire/QuestAvailability.h"

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

/// The controller of the application: holds all state that the screens show and runs every long job. Only the model
/// writes that state; screens read it and call the model's operations. A property's signal is emitted when its value
/// has changed, and only then. The signals of one transition are emitted when it is complete, the step's first.
/// Threads: the context's, signals included. Shut the context down before destroying the model, which the context's
/// jobs use.
class AppModel : public QObject {
    Q_OBJECT

public:
    /// The chat found on this Mac, freed in the background: freeing a million messages takes longer than a frame.
    using ExportResult = std::shared_ptr<const NimbrelExportResult>;

    /// If the token store answers at once, restores the session and chooses the first step, without starting its work.
    explicit AppModel(AppServices services);

    // State.

    /// Idle once it is known who is signed in, if anyone; no step's work begins before that.
    const RestorePhase& restorePhase() const noexcept { return restorePhase_; }
    /// Why the stored session could not be read; absent unless the keychain refused.
    const std::optional<KeychainError>& keychainRefusal() const noexcept { return keychainRefusal_; }

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
    const ExportResult& exportResult() const noexcept { return exportResult_; } ///< null if there is none
    /// The statistics of `exportResult`, counted in the background.
    std::optional<NimbrelExportStats> exportStatistics() const;
    std::optional<QuestAvailability> availability() const; ///< at this moment; absent until the quest is known
    bool canUpload() const;

    const UploadPhase& uploadPhase() const noexcept { return uploadPhase_; }
    const UploadProgress& uploadProgress() const noexcept { return uploadProgress_; } ///< signal: `uploadPhaseChanged`
    const std::optional<SubmissionStatus>& submission() const noexcept { return submission_; }
    const CopyPhase& copyPhase() const noexcept { return copyPhase_; } ///< of a copy of `exportResult`
    std::string reward() const;                                        ///< "$12.50", else "the quest reward"

    /// For the screens' own computations.
    BackgroundExecutor& background() const noexcept { return *services_.background; }

    /// Grows by 1 with each sign-in and each end of a session, but not when a stored session is restored.
    std::int64_t sessionGeneration() const noexcept { return sessionGeneration_; }

    // Steps.

    /// Starts the work of the first step once the stored session has been read. If the keychain has refused, tries
    /// again.
    void start();
    /// Reads the stored session and chooses the first step, unless that is done. If the keychain refuses, ends in the
    /// phase `Refused`; if there is no keychain to try again, leaves the user signed out at once.
    Async<> restore();
    /// After a refusal: continues without a session and does not touch what is stored. `start` then links this Mac.
    void continueSignedOut();
    /// Stops the work of the current step and starts that of `target`; if both are the same step, its work starts over.
    void go(Step target);

    void setUnderstandsUpload(bool value);
    void setAgreesToShare(bool value);
    /// Does nothing unless both boxes are ticked and a user is signed in.
    void acceptConsent();

    void signOut();
    /// Forgets the user's session, here and in the store, and returns what was stored. Another user's session in the
    /// store, linked by another program, stays.
    std::optional<StoredSession> endSession();

    // Jobs. Each cancels and replaces the running one of its kind.

    void startLinking();
    void startAccessProbe();
    void scan();
    /// Does nothing unless `canUpload`.
    void upload();
    void watchSubmission(const std::string& id);
    /// Writes to `path` the archive of `exportResult` that an upload would send at this time; sends nothing. Does
    /// nothing without an `exportResult`.
    void saveCopy(const std::filesystem::path& path);

    // The access screen.

    /// Goes to the find step once the user has had time to see that access is granted, unless access is lost or the
    /// step is left in the meantime.
    void goOnOnceAccessIsSeen();
    void openFullDiskAccessSettings();
    void revealAppInFinder();
    void relaunch();

signals:
    void restorePhaseChanged();
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
    void copyPhaseChanged();
    /// The review is no longer watched: it is over or takes too long. Not emitted if the session ended first.
    void reviewWatchEnded();

private:
    using Signal = void (AppModel::*)();

    /// What a step begins when it is entered and stops when it is left. A step without work has no row in the table.
    struct StepWork {
        Step step;
        void (AppModel::*enter)();
        void (AppModel::*leave)();
    };
    static StepWork workOf(Step step);

    template <class Value>
    void assign(Value& property, Value value, Signal changed, Announcements::Place place = Announcements::Place::last)
    {
        if (property == value) return;
        Value before = std::exchange(property, std::move(value));
        announcements_.changed(property, std::move(before), [this, changed] { emit(this->*changed)(); }, place);
    }
    /// Defers the signals of assignments until the returned object is destroyed.
    Announcements::Transition transition() { return Announcements::Transition(announcements_); }

    /// The jobs started for the signed-in user. All of them end with the session.
    struct SessionJobs {
        Task prefetch;
        Task chat; ///< a scan or an upload
        Task review;
        Task copy;
        std::shared_ptr<AppModel*> progress; ///< receives the upload's reports from other threads; dropped with the job

        void cancelChat();
        void cancel();
    };
    Task running(Async<> job) { return {*services_.context, std::move(job)}; }

    bool isRestored() const { return std::holds_alternative<phase::Idle>(restorePhase_); }
    void setRestorePhase(RestorePhase phase) { assign(restorePhase_, phase, &AppModel::restorePhaseChanged); }
    Async<> runStart();
    Async<> tellOfSlowKeychain();
    Async<std::optional<StoredSession>> readSession();
    void refuse(const KeychainError& refusal);
    void restored(std::optional<StoredSession> session);
    Step firstStep() const;

    void leave(Step step);
    void enter(Step step);
    FullDiskAccessStatus probeAccess() const;
    /// Handles `error` if it concerns the session, and returns whether it does. Call it only from a job that is not
    /// cancelled: the error of an earlier session must not end this one.
    bool handleSessionError(const std::exception& error);
    /// Ends the session in this process only.
    void leaveSession();
    /// Cancels the user's jobs and drops their results.
    void dropUser();
    /// Returns a client that acts only for the user of `session`.
    VornAPI pinnedTo(const StoredSession& session) const;

    void stopLinking();
    void showCode(const DeviceLink& link);
    /// Hides the code: nothing polls for it any more.
    void endCode(LinkPhase next);
    Async<> runLinkLoop();
    struct LinkOutcome;
    Async<LinkOutcome> linkOnce();
    Async<LinkOutcome> poll(DeviceLink link);
    void signedIn(const DesktopSession& session);

    void stopAccessProbe();
    void stopReviewWatch() { jobs_.review.cancel(); }

    void prefetchNimbrel();
    Async<> runPrefetch(VornAPI api);
    Async<> runAccessProbe();
    Async<> showAccess();
    Async<> runScan(VornAPI api);
    Async<> findChat(VornAPI api);
    struct FoundChat;
    void showFound(FoundChat found);
    Async<FoundChat> readMessages(std::vector<std::string> handles);
    void showScanFailure(const std::exception& error);

    Async<> runUpload(VornAPI api, ExportResult exportResult);
    /// Returns the submission; absent if the archive is too large to be sent.
    Async<std::optional<SubmissionStatus>> packAndSend(VornAPI api, ExportResult exportResult);
    Async<ArchiveFile> pack(ExportResult exportResult, std::filesystem::path path);
    Async<SubmissionStatus> send(VornAPI api, std::filesystem::path archive);
    void reportProgress(const UploadProgress& progress);
    void finishUpload(const SubmissionStatus& status);
    Async<> runCopy(ExportResult exportResult, std::filesystem::path path);
    Async<> runReviewWatch(VornAPI api, std::string id);
    /// Returns whether the session outlived the watch.
    Async<bool> watch(VornAPI api, std::string id);
    Async<bool> pollSubmission(VornAPI api, std::string id);

    AppServices services_;
    Log log_;
    Announcements announcements_;

    RestorePhase restorePhase_;
    std::optional<KeychainError> keychainRefusal_;
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
    ExportResult exportResult_;
    std::optional<NimbrelExportStats> statistics_; ///< of the last `exportResult`
    UploadPhase uploadPhase_;
    UploadProgress uploadProgress_;
    std::optional<SubmissionStatus> submission_;
    CopyPhase copyPhase_;

    std::int64_t sessionGeneration_ = 0;
    std::optional<Clock::Duration> lastCodeRequest_;

    Task restoreTask_, linkTask_, accessTask_, accessSeenTask_;
    SessionJobs jobs_;
};

} // namespace vorn
