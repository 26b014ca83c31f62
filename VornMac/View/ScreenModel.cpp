#include "VornMac/View/ScreenModel.h"

#include "VornMac/Text/LinkText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/View/Countdown.h"

#include <chrono>
#include <utility>
#include <vector>

namespace vorn {
namespace {

constexpr auto betweenLooks = std::chrono::seconds(1); // how often the time left is updated

} // namespace

ScreenModel::ScreenModel(AppModel& model, MainContext& context, Clock& clock)
    : model_(&model), context_(&context), clock_(&clock), shown_(derived()), everything_(&model, &context)
{
    follow();
    showExport();
    restartCountdown();
}

ScreenModel::ScreenModel(const ScreenModel& shown, QObject* parent)
    : QObject(parent), model_(nullptr), context_(nullptr), clock_(nullptr), shown_(shown.shown_), found_(shown.found_),
      everything_(nullptr, nullptr), linkSecondsLeft_(shown.linkSecondsLeft_)
{
    preview_.show(shown.preview_);
}

ScreenModel* ScreenModel::asItWas(QObject* screen) const
{
    return new ScreenModel(*this, screen); // NOLINT(cppcoreguidelines-owning-memory): owned by its parent
}

void ScreenModel::follow()
{
    const auto on = [this](auto signal, auto action) { connect(model_, signal, this, action); };
    for (const auto signal :
         {&AppModel::restorePhaseChanged, &AppModel::sessionChanged, &AppModel::linkPhaseChanged,
          &AppModel::qrPayloadChanged, &AppModel::linkExpiresAtChanged, &AppModel::understandsUploadChanged,
          &AppModel::agreesToShareChanged, &AppModel::accessChanged, &AppModel::scanPhaseChanged,
          &AppModel::nimbrelChanged, &AppModel::submissionChanged})
        on(signal, &ScreenModel::refresh);
    on(&AppModel::uploadPhaseChanged, &ScreenModel::followUpload);
    on(&AppModel::stepChanged, &ScreenModel::enterStep);
    on(&AppModel::exportResultChanged, &ScreenModel::showExport);
    on(&AppModel::qrPayloadChanged, &ScreenModel::restartCountdown);
    on(&AppModel::linkExpiresAtChanged, &ScreenModel::restartCountdown);
}

// Changes.

void ScreenModel::refresh()
{
    const Shown before = std::exchange(shown_, derived());
    std::vector<void (ScreenModel::*)()> changes;
    const auto compare = [&](const auto& part, void (ScreenModel::*signal)()) {
        if (before.*part != shown_.*part) changes.push_back(signal);
    };
    compare(&Shown::user, &ScreenModel::sessionChanged);
    compare(&Shown::link, &ScreenModel::linkPhaseChanged);
    compare(&Shown::qrPayload, &ScreenModel::qrPayloadChanged);
    compare(&Shown::linkExpires, &ScreenModel::linkExpiresChanged);
    compare(&Shown::consent, &ScreenModel::consentChanged);
    compare(&Shown::understandsUpload, &ScreenModel::understandsUploadChanged);
    compare(&Shown::agreesToShare, &ScreenModel::agreesToShareChanged);
    compare(&Shown::access, &ScreenModel::accessChanged);
    compare(&Shown::canUpload, &ScreenModel::canUploadChanged);
    compare(&Shown::scan, &ScreenModel::scanPhaseChanged);
    compare(&Shown::uploadBar, &ScreenModel::uploadBarChanged);
    compare(&Shown::reward, &ScreenModel::rewardChanged);
    compare(&Shown::isOutcomeFinal, &ScreenModel::outcomeChanged);
    compare(&Shown::text, &ScreenModel::textChanged);
    compare(&Shown::restore, &ScreenModel::restorePhaseChanged);
    compare(&Shown::step, &ScreenModel::stepChanged);        // last: a new screen reads everything
    for (const auto signal : changes) emit(this->*signal)(); // a slot may change the model and re-enter `refresh`
}

void ScreenModel::showExport()
{
    preview_.show(model_->exportResult());
    if (const Found before = std::exchange(found_, found()); before != found_) emit exportResultChanged();
}

void ScreenModel::enterStep()
{
    emit stepLeft();
    showExport();
    restartCountdown();
    refresh();
}

// The code's lifetime.

void ScreenModel::restartCountdown()
{
    countdown_ = {};
    const auto expiry = model_->linkExpiresAt();
    setLinkSecondsLeft(expiry ? countdown::secondsLeft(clock_->date(), *expiry) : 0);
    if (expiry && linkSecondsLeft_ > 0) countdown_ = Task(*context_, runCountdown(*expiry));
}

Async<> ScreenModel::runCountdown(Instant expiry)
{
    while (const auto pause = countdown::untilNextSecond(clock_->date(), expiry)) {
        co_await clock_->sleep(*pause);
        setLinkSecondsLeft(countdown::secondsLeft(clock_->date(), expiry));
    }
    refresh(); // the code has expired, though it is still polled for a while
}

void ScreenModel::setLinkSecondsLeft(int seconds)
{
    if (std::exchange(linkSecondsLeft_, seconds) != seconds) emit linkSecondsLeftChanged();
}

QString ScreenModel::linkTimeLeft() const
{
    return shown(clockText(linkSecondsLeft_));
}

// The upload's time.

void ScreenModel::followUpload()
{
    if (!vorn::uploadBar(model_->uploadPhase()).isMoving()) {
        uploadWatch_ = {};
        timeLeft_ = {};
    } else {
        timeLeft_.update(model_->uploadProgress(), clock_->now());
        if (!uploadWatch_.isRunning()) uploadWatch_ = Task(*context_, runUploadWatch());
    }
    refresh();
}

// The time left also shrinks, or becomes unknown, while nothing is reported.
Async<> ScreenModel::runUploadWatch()
{
    while (true) {
        co_await clock_->sleep(betweenLooks);
        refresh();
    }
}

// The reward.

QString ScreenModel::countedReward(double part) const
{
    return shown(countedText(shown_.reward.amount.toStdString(), part));
}

bool ScreenModel::takeMoment()
{
    if (model_ == nullptr || model_->step() != Step::done) return false;
    const SubmissionStatus latest = submission();
    if (!latest.status.is(ReviewStatus::Kind::approved)) return false;
    return std::exchange(celebrated_, latest.id) != latest.id;
}

// The operations.

void ScreenModel::start()
{
    if (model_ == nullptr) return;
    refresh();
    model_->start();
}

void ScreenModel::startSignedOut()
{
    if (model_ == nullptr) return;
    model_->continueSignedOut();
    start();
}

} // namespace vorn
