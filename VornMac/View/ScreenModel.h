#pragma once

#include "Platform/Async/Clock.h"
#include "Platform/Async/MainContext.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Text/Step.h"
#include "VornMac/Text/TimeLeft.h"
#include "VornMac/View/Everything.h"
#include "VornMac/View/PreviewList.h"
#include "VornMac/View/ShownText.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <qqmlregistration.h>

namespace vorn {

/// The application model as the screens see it: its state in QML's types, the finished texts of the step's screen, and
/// its operations. The words are in `VornMac/Text`. A property's signal is emitted once when a change of the model has
/// changed it. Properties that also depend on the current time, such as a cooldown, are computed whenever the model
/// changes and before a screen is shown.
///
/// A screen that fades out keeps showing its last state: `stepLeft` is emitted before anything of the next step, and
/// `asItWas` returns an unchanging copy of this object for that screen.
/// Threads: the model's.
class ScreenModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_CLASSINFO("RegisterEnumClassesUnscoped", "false")

    Q_PROPERTY(bool isRestored READ isRestored NOTIFY restorePhaseChanged)
    Q_PROPERTY(vorn::ShownText keychain READ keychain NOTIFY restorePhaseChanged)
    Q_PROPERTY(int step READ step NOTIFY stepChanged)
    Q_PROPERTY(QString stepName READ stepName NOTIFY stepChanged)
    Q_PROPERTY(int stepCount READ stepCount CONSTANT)
    Q_PROPERTY(vorn::ShownText text READ text NOTIFY textChanged)
    Q_PROPERTY(QString position READ position NOTIFY stepChanged)
    Q_PROPERTY(bool isSignedIn READ isSignedIn NOTIFY sessionChanged)
    Q_PROPERTY(QString identity READ identity NOTIFY sessionChanged)
    Q_PROPERTY(QString initial READ initial NOTIFY sessionChanged)

    Q_PROPERTY(bool isCodeRead READ isCodeRead NOTIFY linkPhaseChanged)
    Q_PROPERTY(bool hasLinkFailed READ hasLinkFailed NOTIFY linkPhaseChanged)
    Q_PROPERTY(QString qrPayload READ qrPayload NOTIFY qrPayloadChanged)
    Q_PROPERTY(bool linkExpires READ linkExpires NOTIFY linkExpiresChanged)
    Q_PROPERTY(QString linkTimeLeft READ linkTimeLeft NOTIFY linkSecondsLeftChanged)

    Q_PROPERTY(vorn::ShownConsent consent READ consent NOTIFY consentChanged)
    Q_PROPERTY(bool understandsUpload READ understandsUpload WRITE setUnderstandsUpload NOTIFY understandsUploadChanged)
    Q_PROPERTY(bool agreesToShare READ agreesToShare WRITE setAgreesToShare NOTIFY agreesToShareChanged)

    Q_PROPERTY(Access access READ access NOTIFY accessChanged)

    Q_PROPERTY(bool isLooking READ isLooking NOTIFY scanPhaseChanged)
    Q_PROPERTY(bool isFound READ isFound NOTIFY scanPhaseChanged)
    Q_PROPERTY(QStringList statisticsLabels READ statisticsLabels NOTIFY exportResultChanged)
    Q_PROPERTY(QStringList statisticsValues READ statisticsValues NOTIFY exportResultChanged)
    Q_PROPERTY(vorn::PreviewList* preview READ preview CONSTANT)
    Q_PROPERTY(vorn::Everything* everything READ everything CONSTANT)
    Q_PROPERTY(bool canUpload READ canUpload NOTIFY canUploadChanged)

    Q_PROPERTY(vorn::ShownUploadBar uploadBar READ uploadBar NOTIFY uploadBarChanged)

    Q_PROPERTY(vorn::ShownReward reward READ reward NOTIFY rewardChanged)
    Q_PROPERTY(bool isOutcomeFinal READ isOutcomeFinal NOTIFY outcomeChanged)

public:
    enum class Access { Granted, Denied, NoDatabase };
    Q_ENUM(Access)

    /// `context` and `clock` are the model's. All three outlive this, and `context` is shut down first.
    ScreenModel(AppModel& model, MainContext& context, Clock& clock);

    /// Returns a copy that keeps showing the current state, owned by `screen`. It emits no signals, and its operations
    /// do nothing.
    Q_INVOKABLE vorn::ScreenModel* asItWas(QObject* screen) const;

    /// Whether it is known who is signed in, if anyone; no step is shown before that.
    bool isRestored() const { return shown_.restore.isOver; }
    const ShownText& keychain() const { return shown_.restore.text; } ///< shown instead of a step
    int step() const { return static_cast<int>(shown_.step); }        ///< from 0
    QString stepName() const { return QString::fromUtf8(nameOf(shown_.step)); }
    int stepCount() const { return static_cast<int>(stepNames.size()); }
    const ShownText& text() const { return shown_.text; } ///< of the step's screen
    QString position() const;                             ///< of the step among all, for a screen reader
    bool isSignedIn() const { return shown_.user.isSignedIn; }
    QString identity() const { return shown_.user.identity; } ///< who is signed in; empty without a session
    QString initial() const { return shown_.user.initial; }   ///< the name's first character, upper case; may be empty

    bool isCodeRead() const { return shown_.link.isCodeRead; } ///< by the phone, on which the user must confirm
    bool hasLinkFailed() const { return shown_.link.hasFailed; }
    QString qrPayload() const { return shown_.qrPayload; } ///< a secret, for the phone; empty once it has expired
    /// Whether a code is shown whose expiry is known.
    bool linkExpires() const { return shown_.linkExpires; }
    /// Whole seconds until the code expires, rounded up; never below 0, and 0 unless `linkExpires`. Counts down while
    /// the link screen is shown.
    int linkSecondsLeft() const { return linkSecondsLeft_; }
    QString linkTimeLeft() const; ///< `linkSecondsLeft` as "1:58"

    const ShownConsent& consent() const { return shown_.consent; }
    bool understandsUpload() const { return shown_.understandsUpload; }
    void setUnderstandsUpload(bool value) { call(&AppModel::setUnderstandsUpload, value); }
    bool agreesToShare() const { return shown_.agreesToShare; }
    void setAgreesToShare(bool value) { call(&AppModel::setAgreesToShare, value); }

    Access access() const { return shown_.access; }

    bool isLooking() const { return shown_.scan.isLooking; }
    bool isFound() const { return shown_.scan.isFound; }
    QStringList statisticsLabels() const { return found_.labels; } ///< empty before something is found
    QStringList statisticsValues() const { return found_.values; } ///< one for each label
    PreviewList* preview() { return &preview_; }
    Everything* everything() { return &everything_; }
    bool canUpload() const { return shown_.canUpload; }

    const ShownUploadBar& uploadBar() const { return shown_.uploadBar; }

    const ShownReward& reward() const { return shown_.reward; } ///< the submission's, else the quest's: "$12.50"
    /// What is shown while the reward's amount is counted up: `part` of it, 0…1.
    Q_INVOKABLE QString countedReward(double part) const;
    /// Returns true once for each approved submission, on the last step: its reward is celebrated once.
    Q_INVOKABLE bool takeMoment();
    bool isOutcomeFinal() const { return shown_.isOutcomeFinal; } ///< there is nothing more to wait for

    /// Begins the work of the first step. After a refusal, asks the keychain again.
    Q_INVOKABLE void start();
    /// After a refusal: links this Mac, whatever is stored.
    Q_INVOKABLE void startSignedOut();
    Q_INVOKABLE void backToConsent() { call(&AppModel::go, Step::consent); }
    /// Goes to the find screen, which looks for the chat; if that is shown, looks again.
    Q_INVOKABLE void lookForChat() { call(&AppModel::go, Step::find); }
    Q_INVOKABLE void startLinking() { call(&AppModel::startLinking); }
    Q_INVOKABLE void acceptConsent() { call(&AppModel::acceptConsent); }
    /// Checks at once whether the Messages database can be read, and continues to check.
    Q_INVOKABLE void startAccessProbe() { call(&AppModel::startAccessProbe); }
    Q_INVOKABLE void goOnOnceAccessIsSeen() { call(&AppModel::goOnOnceAccessIsSeen); }
    Q_INVOKABLE void openFullDiskAccessSettings() { call(&AppModel::openFullDiskAccessSettings); }
    Q_INVOKABLE void revealAppInFinder() { call(&AppModel::revealAppInFinder); }
    Q_INVOKABLE void relaunch() { call(&AppModel::relaunch); }
    Q_INVOKABLE void upload() { call(&AppModel::upload); }
    Q_INVOKABLE void signOut() { call(&AppModel::signOut); }

signals:
    void restorePhaseChanged();
    void stepLeft(); ///< emitted while the previous step is still shown
    void stepChanged();
    void textChanged();
    void sessionChanged();
    void linkPhaseChanged();
    void qrPayloadChanged();
    void linkExpiresChanged();
    void linkSecondsLeftChanged();
    void consentChanged();
    void understandsUploadChanged();
    void agreesToShareChanged();
    void accessChanged();
    void scanPhaseChanged();
    void exportResultChanged();
    void canUploadChanged();
    void uploadBarChanged();
    void rewardChanged();
    void outcomeChanged();

private:
    struct User {
        bool isSignedIn = false;
        QString identity;
        QString initial;
        bool operator==(const User&) const = default;
    };
    struct Link {
        bool isCodeRead = false;
        bool hasFailed = false;
        bool operator==(const Link&) const = default;
    };
    struct Restore {
        bool isOver = true;
        ShownText text;
        bool operator==(const Restore&) const = default;
    };
    struct Scan {
        bool isLooking = false;
        bool isFound = false;
        bool operator==(const Scan&) const = default;
    };
    /// Each member has a signal of its own.
    struct Shown {
        Restore restore;
        Step step = Step::link;
        ShownText text;
        User user;
        Link link;
        QString qrPayload;
        bool linkExpires = false;
        ShownConsent consent;
        bool understandsUpload = false;
        bool agreesToShare = false;
        Access access = Access::Denied;
        Scan scan;
        bool canUpload = false;
        ShownUploadBar uploadBar;
        ShownReward reward;
        bool isOutcomeFinal = false;
    };
    /// Texts about an export result, made anew when it changes or a step is entered.
    struct Found {
        QStringList labels;
        QStringList values;
        bool operator==(const Found&) const = default;
    };

    ScreenModel(const ScreenModel& shown, QObject* parent);

    /// Does nothing in a copy made by `asItWas`.
    template <class... Taken, class... Given>
    void call(void (AppModel::*operation)(Taken...), Given... given)
    {
        if (model_ != nullptr) (model_->*operation)(given...);
    }

    void follow();
    Shown derived() const;
    Restore restore() const;
    ScreenText currentText() const;
    User user() const;
    Access currentAccess() const;
    SubmissionStatus submission() const;
    ShownReward currentReward() const;
    ShownUploadBar currentUploadBar() const;
    Found found() const;
    void refresh();
    void showExport();
    void enterStep();

    void restartCountdown();
    Async<> runCountdown(Instant expiry);
    void setLinkSecondsLeft(int seconds);

    void followUpload();
    Async<> runUploadWatch();

    AppModel* model_; ///< null in a copy made by `asItWas`
    MainContext* context_;
    Clock* clock_;
    TimeLeft timeLeft_; ///< of the upload; constructed before the members that use it
    Shown shown_;
    Found found_;
    PreviewList preview_;
    Everything everything_;
    int linkSecondsLeft_ = 0;
    Task countdown_;
    Task uploadWatch_;                      ///< runs while the upload is sent
    std::optional<std::string> celebrated_; ///< the id of the last submission that was celebrated
};

} // namespace vorn
