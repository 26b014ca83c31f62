#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/View/PreviewList.h"

#include <optional>

#include <QObject>
#include <QString>
#include <qqmlregistration.h>

namespace vorn {

/// The application model as the screens see it: its state in QML's types, with the words that depend on it, and its
/// operations. A property's signal is sent once when the model's change has changed it. What depends on the time of day
/// as well, as a cooldown does, is looked at whenever the model changes and before a screen is shown.
///
/// A screen that fades out goes on showing what it showed: `stepLeft` is sent before anything of the next step is told,
/// and `asItWas` gives the screen a model that stays as it is, whose operations do nothing.
/// Threads: the model's.
class ScreenModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_CLASSINFO("RegisterEnumClassesUnscoped", "false")

    Q_PROPERTY(RestorePhase restorePhase READ restorePhase NOTIFY restorePhaseChanged)
    Q_PROPERTY(QString restoreNote READ restoreNote NOTIFY restorePhaseChanged)
    Q_PROPERTY(Step step READ step NOTIFY stepChanged)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY sessionChanged)
    Q_PROPERTY(QString displayName READ displayName NOTIFY sessionChanged)
    Q_PROPERTY(QString initial READ initial NOTIFY sessionChanged)

    Q_PROPERTY(LinkPhase linkPhase READ linkPhase NOTIFY linkPhaseChanged)
    Q_PROPERTY(QString linkFailure READ linkFailure NOTIFY linkPhaseChanged)
    Q_PROPERTY(QString qrPayload READ qrPayload NOTIFY qrPayloadChanged)
    Q_PROPERTY(bool linkExpires READ linkExpires NOTIFY linkExpiresChanged)
    Q_PROPERTY(int linkSecondsLeft READ linkSecondsLeft NOTIFY linkSecondsLeftChanged)

    Q_PROPERTY(bool understandsUpload READ understandsUpload WRITE setUnderstandsUpload NOTIFY understandsUploadChanged)
    Q_PROPERTY(bool agreesToShare READ agreesToShare WRITE setAgreesToShare NOTIFY agreesToShareChanged)
    Q_PROPERTY(QString reward READ reward NOTIFY rewardChanged)

    Q_PROPERTY(Access access READ access NOTIFY accessChanged)

    Q_PROPERTY(ScanPhase scanPhase READ scanPhase NOTIFY scanPhaseChanged)
    Q_PROPERTY(QString scanFailure READ scanFailure NOTIFY scanPhaseChanged)
    Q_PROPERTY(QString messageCount READ messageCount NOTIFY exportResultChanged)
    Q_PROPERTY(QString promptCount READ promptCount NOTIFY exportResultChanged)
    Q_PROPERTY(QString replyCount READ replyCount NOTIFY exportResultChanged)
    Q_PROPERTY(QString dates READ dates NOTIFY exportResultChanged)
    Q_PROPERTY(vorn::PreviewList* preview READ preview CONSTANT)
    Q_PROPERTY(Availability availability READ availability NOTIFY availabilityChanged)
    Q_PROPERTY(QString availabilityNote READ availabilityNote NOTIFY availabilityChanged)
    Q_PROPERTY(bool canUpload READ canUpload NOTIFY canUploadChanged)

    Q_PROPERTY(UploadPhase uploadPhase READ uploadPhase NOTIFY uploadPhaseChanged)
    Q_PROPERTY(QString uploadFailure READ uploadFailure NOTIFY uploadPhaseChanged)
    Q_PROPERTY(double uploadFraction READ uploadFraction NOTIFY uploadPhaseChanged)

    Q_PROPERTY(Outcome outcome READ outcome NOTIFY outcomeChanged)
    Q_PROPERTY(QString earned READ earned NOTIFY outcomeChanged)
    Q_PROPERTY(QString rejection READ rejection NOTIFY outcomeChanged)
    Q_PROPERTY(QString nextUpload READ nextUpload NOTIFY outcomeChanged)

public:
    enum class RestorePhase { Idle, Loading, Waiting, Refused };
    Q_ENUM(RestorePhase)
    enum class Step { Link, Consent, Access, Find, Upload, Done };
    Q_ENUM(Step)
    enum class LinkPhase { Loading, Showing, Scanned, Rejected, Failed };
    Q_ENUM(LinkPhase)
    enum class Access { Granted, Denied, NoDatabase };
    Q_ENUM(Access)
    enum class ScanPhase { Idle, Loading, Unavailable, NotConfigured, NotFound, Found, Failed };
    Q_ENUM(ScanPhase)
    enum class Availability { Unknown, Available, InReview, Cooldown, LastRejected };
    Q_ENUM(Availability)
    enum class UploadPhase { Idle, Preparing, Uploading, Finishing, Failed };
    Q_ENUM(UploadPhase)
    /// How the submission stands. No submission, and a status that this version does not know, are being analyzed.
    enum class Outcome { Analyzing, ReviewPending, Approved, Rejected, Expired };
    Q_ENUM(Outcome)

    /// `context` and `clock` are the model's. All three outlive this, and `context` is shut down before it goes.
    ScreenModel(AppModel& model, MainContext& context, Clock& clock);

    /// What is shown now, for good: for `screen`, which it goes with. Sends no signal, and its operations do nothing.
    Q_INVOKABLE vorn::ScreenModel* asItWas(QObject* screen) const;

    /// No step is shown before this is idle: it is not known yet who is signed in.
    RestorePhase restorePhase() const { return shown_.restore.phase; }
    QString restoreNote() const { return shown_.restore.note; } ///< empty where there is nothing to say
    Step step() const { return shown_.step; }
    bool isSignedIn() const { return shown_.user.isSignedIn; }
    QString displayName() const { return shown_.user.displayName; } ///< empty without a session
    QString initial() const { return shown_.user.initial; }         ///< its first character in upper case; may be empty

    LinkPhase linkPhase() const { return shown_.link.phase; }
    QString linkFailure() const { return shown_.link.failure; } ///< empty in other phases, as every text below
    QString qrPayload() const { return shown_.qrPayload; }      ///< a secret, for the phone
    /// Whether there is a code of which it is known when it expires.
    bool linkExpires() const { return shown_.linkExpires; }
    /// Whole seconds until the code expires, a begun one counted; never below 0, and 0 unless `linkExpires`. Goes on
    /// while the link screen is shown.
    int linkSecondsLeft() const { return linkSecondsLeft_; }

    bool understandsUpload() const { return shown_.understandsUpload; }
    void setUnderstandsUpload(bool value);
    bool agreesToShare() const { return shown_.agreesToShare; }
    void setAgreesToShare(bool value);
    QString reward() const { return shown_.reward; } ///< "$12.50", else "the quest reward"

    Access access() const { return shown_.access; }

    ScanPhase scanPhase() const { return shown_.scan.phase; }
    QString scanFailure() const { return shown_.scan.failure; }
    /// With thousands apart, as the counts below; empty before something is found.
    QString messageCount() const { return found_.messageCount; }
    QString promptCount() const { return found_.promptCount; }
    QString replyCount() const { return found_.replyCount; }
    QString dates() const { return found_.dates; } ///< first – last; empty when either is missing
    PreviewList* preview() { return &preview_; }
    Availability availability() const { return shown_.availability.kind; }
    QString availabilityNote() const { return shown_.availability.note; } ///< empty where there is nothing to say
    bool canUpload() const { return shown_.canUpload; }

    UploadPhase uploadPhase() const { return shown_.upload.phase; }
    QString uploadFailure() const { return shown_.upload.failure; }
    /// 0…1, as the bar shows it: 1 while finishing, 0 before and after a failure.
    double uploadFraction() const { return shown_.upload.fraction; }

    Outcome outcome() const { return shown_.review.outcome; }
    QString earned() const { return shown_.review.earned; }         ///< the submission's reward, else the quest's
    QString rejection() const { return shown_.review.rejection; }   ///< why it was rejected; empty otherwise
    QString nextUpload() const { return shown_.review.nextUpload; } ///< its day; empty when it is not known

    /// Begins the work of the first step; after a refusal, asks the keychain again.
    Q_INVOKABLE void start();
    /// After a refusal: links this Mac, whatever is stored.
    Q_INVOKABLE void startSignedOut();
    Q_INVOKABLE void go(Step step);
    Q_INVOKABLE void startLinking();
    Q_INVOKABLE void acceptConsent();
    /// Looks at once whether the Messages database can be read, and goes on looking.
    Q_INVOKABLE void startAccessProbe();
    Q_INVOKABLE void openFullDiskAccessSettings();
    Q_INVOKABLE void revealAppInFinder();
    Q_INVOKABLE void relaunch();
    Q_INVOKABLE void upload();
    Q_INVOKABLE void signOut();

signals:
    void restorePhaseChanged();
    void stepLeft(); ///< what is shown is still that of the step before
    void stepChanged();
    void sessionChanged();
    void linkPhaseChanged();
    void qrPayloadChanged();
    void linkExpiresChanged();
    void linkSecondsLeftChanged();
    void understandsUploadChanged();
    void agreesToShareChanged();
    void rewardChanged();
    void accessChanged();
    void scanPhaseChanged();
    void exportResultChanged();
    void availabilityChanged();
    void canUploadChanged();
    void uploadPhaseChanged();
    void outcomeChanged();

private:
    struct User {
        bool isSignedIn = false;
        QString displayName;
        QString initial;
        bool operator==(const User&) const = default;
    };
    template <class Phase>
    struct Progress {
        Phase phase = {};
        QString failure;
        double fraction = 0; ///< of an upload
        bool operator==(const Progress&) const = default;
    };
    struct Restore {
        RestorePhase phase = RestorePhase::Idle;
        QString note;
        bool operator==(const Restore&) const = default;
    };
    struct Offer {
        Availability kind = Availability::Unknown;
        QString note;
        bool operator==(const Offer&) const = default;
    };
    struct Review {
        Outcome outcome = Outcome::Analyzing;
        QString earned;
        QString rejection;
        QString nextUpload;
        bool operator==(const Review&) const = default;
    };
    /// What one signal tells of stands in one member.
    struct Shown {
        Restore restore;
        Step step = Step::Link;
        User user;
        Progress<LinkPhase> link;
        QString qrPayload;
        bool linkExpires = false;
        bool understandsUpload = false;
        bool agreesToShare = false;
        QString reward;
        Access access = Access::Denied;
        Progress<ScanPhase> scan;
        Offer availability;
        bool canUpload = false;
        Progress<UploadPhase> upload;
        Review review;
    };
    /// The words about an export, which are worked out only when there is another.
    struct Found {
        QString messageCount;
        QString promptCount;
        QString replyCount;
        QString dates;
        bool operator==(const Found&) const = default;
    };

    ScreenModel(const ScreenModel& shown, QObject* parent);

    void follow();
    Shown worked() const;
    Restore restore() const;
    Step currentStep() const;
    User user() const;
    Access currentAccess() const;
    static Offer offer(const std::optional<QuestAvailability>& availability);
    Review review(const std::optional<QuestAvailability>& availability) const;
    Found found() const;
    void refresh();
    void showExport();
    void enterStep();

    void restartCountdown();
    Async<> runCountdown(Instant expiry);
    void setLinkSecondsLeft(int seconds);

    AppModel* model_; ///< null in what stays as it was
    MainContext* context_;
    Clock* clock_;
    Shown shown_;
    Found found_;
    PreviewList preview_;
    int linkSecondsLeft_ = 0;
    Task countdown_;
};

} // namespace vorn
