#include "Platform/Base/Text.h"
#include "VornMac/Text/AccountText.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/FindText.h"
#include "VornMac/Text/KeychainText.h"
#include "VornMac/Text/QuestText.h"
#include "VornMac/Text/StatisticsText.h"
#include "VornMac/Text/StepText.h"
#include "VornMac/Text/UploadText.h"
#include "VornMac/View/ScreenModel.h"

#include <variant>

// What ScreenModel shows of the application model.
namespace vorn {

ScreenModel::Restore ScreenModel::restore() const
{
    const RestorePhase& phase = model_->restorePhase();
    return {std::holds_alternative<phase::Idle>(phase), ShownText(keychainText(phase, model_->keychainRefusal()))};
}

ScreenText ScreenModel::currentText() const
{
    return textOfStep({.step = model_->step(),
                       .link = model_->linkPhase(),
                       .access = model_->access(),
                       .scan = model_->scanPhase(),
                       .upload = model_->uploadPhase(),
                       .outcome = {submission(), model_->nimbrel(), model_->availability()}});
}

QString ScreenModel::position() const
{
    return shown(stepText(step() + 1, stepCount()));
}

ScreenModel::User ScreenModel::user() const
{
    const auto& session = model_->session();
    if (!session) return {};
    return {true, shown(signedInText(session->displayName)),
            shown(text::prefixOfCharacters(session->displayName, 1)).toUpper()};
}

ScreenModel::Access ScreenModel::currentAccess() const
{
    switch (model_->access()) {
    case FullDiskAccessStatus::granted: return Access::Granted;
    case FullDiskAccessStatus::denied: return Access::Denied;
    case FullDiskAccessStatus::noDatabase: break;
    }
    return Access::NoDatabase;
}

SubmissionStatus ScreenModel::submission() const
{
    return model_->submission().value_or(SubmissionStatus{});
}

// An earlier upload's submission stays known until the next upload has one, so it counts only on the last step.
ShownReward ScreenModel::currentReward() const
{
    if (model_->step() != Step::done) return {model_->reward(), rewardStatus(model_->uploadPhase())};
    const SubmissionStatus latest = submission();
    return {earnedText(latest, model_->reward()), rewardStatus(latest.status)};
}

ScreenModel::Found ScreenModel::found() const
{
    const auto statistics = model_->exportStatistics();
    if (!statistics) return {};
    Found found;
    for (const StatisticsRow& row : statisticsRows(*statistics)) {
        found.labels.append(shown(row.label));
        found.values.append(shown(row.value));
    }
    return found;
}

ShownUploadBar ScreenModel::currentUploadBar() const
{
    const UploadBar bar = vorn::uploadBar(model_->uploadPhase());
    return {bar, uploadAmounts(bar, model_->uploadProgress(), timeLeft_.at(clock_->now()))};
}

ScreenModel::Shown ScreenModel::derived() const
{
    const LinkPhase& link = model_->linkPhase();
    Shown shown;
    shown.restore = restore();
    shown.step = model_->step();
    shown.text = ShownText(currentText());
    shown.user = user();
    shown.link = {std::holds_alternative<phase::Scanned>(link), std::holds_alternative<phase::Failed>(link)};
    const auto expiry = model_->linkExpiresAt();
    const bool hasExpired = expiry && *expiry <= clock_->date();
    shown.qrPayload = hasExpired ? QString() : vorn::shown(model_->qrPayload().value_or(""));
    shown.linkExpires = expiry && !hasExpired;
    shown.consent = ShownConsent(consentFor(model_->reward()));
    shown.understandsUpload = model_->understandsUpload();
    shown.agreesToShare = model_->agreesToShare();
    shown.access = currentAccess();
    shown.scan = {vorn::isLooking(model_->scanPhase()), std::holds_alternative<phase::Found>(model_->scanPhase())};
    shown.canUpload = model_->canUpload();
    shown.uploadBar = currentUploadBar();
    shown.reward = currentReward();
    shown.isOutcomeFinal = model_->step() == Step::done && submission().status.isFinal();
    return shown;
}

} // namespace vorn
