#include "VornMac/View/ScreenModel.h"

#include "VornMac/View/Countdown.h"

#include <utility>

namespace vorn {

ScreenModel::ScreenModel(AppModel& model, MainContext& context, Clock& clock)
    : model_(model), context_(context), clock_(clock), shown_(worked())
{
    follow();
    showExport();
    restartCountdown();
}

void ScreenModel::follow()
{
    const auto on = [this](auto signal, auto action) { connect(&model_, signal, this, action); };
    on(&AppModel::stepChanged, &ScreenModel::enterStep);
    on(&AppModel::sessionChanged, &ScreenModel::sessionChanged);
    on(&AppModel::linkPhaseChanged, &ScreenModel::linkPhaseChanged);
    on(&AppModel::qrPayloadChanged, &ScreenModel::qrPayloadChanged);
    on(&AppModel::qrPayloadChanged, &ScreenModel::restartCountdown);
    on(&AppModel::linkExpiresAtChanged, &ScreenModel::restartCountdown);
    on(&AppModel::understandsUploadChanged, &ScreenModel::understandsUploadChanged);
    on(&AppModel::agreesToShareChanged, &ScreenModel::agreesToShareChanged);
    on(&AppModel::accessChanged, &ScreenModel::accessChanged);
    on(&AppModel::scanPhaseChanged, &ScreenModel::refresh);
    on(&AppModel::scanPhaseChanged, &ScreenModel::scanPhaseChanged);
    on(&AppModel::nimbrelChanged, &ScreenModel::refresh);
    on(&AppModel::exportResultChanged, &ScreenModel::showExport);
    on(&AppModel::uploadPhaseChanged, &ScreenModel::uploadPhaseChanged);
    on(&AppModel::submissionChanged, &ScreenModel::refresh);
}

// The changes.

void ScreenModel::refresh()
{
    const Shown before = std::exchange(shown_, worked());
    // Who hears of one may change the model, and so this again: compare first.
    const bool availability = before.availability != shown_.availability;
    const bool upload = before.canUpload != shown_.canUpload;
    const bool reward = before.reward != shown_.reward;
    const bool outcome = before.review != shown_.review;
    if (availability) emit availabilityChanged();
    if (upload) emit canUploadChanged();
    if (reward) emit rewardChanged();
    if (outcome) emit outcomeChanged();
}

void ScreenModel::showExport()
{
    preview_.show(model_.exportResult());
    emit exportResultChanged();
}

/// Before the new screen is made, which shows what is true then.
void ScreenModel::enterStep()
{
    refresh();
    restartCountdown();
    emit stepChanged();
}

// The code's time.

void ScreenModel::restartCountdown()
{
    countdown_ = {};
    if (step() != Step::Link) return;
    const auto expiry = model_.linkExpiresAt();
    const bool counts = model_.qrPayload() && expiry;
    setLinkSecondsLeft(counts ? countdown::secondsLeft(clock_.date(), *expiry) : 0);
    if (counts && linkSecondsLeft_ > 0) countdown_ = Task(context_, runCountdown(*expiry));
}

Async<> ScreenModel::runCountdown(Instant expiry)
{
    while (const auto pause = countdown::untilNextSecond(clock_.date(), expiry)) {
        co_await clock_.sleep(*pause);
        setLinkSecondsLeft(countdown::secondsLeft(clock_.date(), expiry));
    }
}

void ScreenModel::setLinkSecondsLeft(int seconds)
{
    if (std::exchange(linkSecondsLeft_, seconds) != seconds) emit linkSecondsLeftChanged();
}

// The operations.

void ScreenModel::start()
{
    refresh();
    model_.start();
}

void ScreenModel::go(Step step)
{
    model_.go(allSteps.at(static_cast<std::size_t>(step)));
}

void ScreenModel::startLinking()
{
    model_.startLinking();
}

void ScreenModel::setUnderstandsUpload(bool value)
{
    model_.setUnderstandsUpload(value);
}

void ScreenModel::setAgreesToShare(bool value)
{
    model_.setAgreesToShare(value);
}

void ScreenModel::acceptConsent()
{
    model_.acceptConsent();
}

void ScreenModel::startAccessProbe()
{
    model_.startAccessProbe();
}

void ScreenModel::openFullDiskAccessSettings()
{
    model_.openFullDiskAccessSettings();
}

void ScreenModel::revealAppInFinder()
{
    model_.revealAppInFinder();
}

void ScreenModel::relaunch()
{
    model_.relaunch();
}

void ScreenModel::upload()
{
    model_.upload();
}

void ScreenModel::signOut()
{
    model_.signOut();
}

} // namespace vorn
