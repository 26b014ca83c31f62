#include "VornMac/Application/PresenceKeeper.h"

#include "VornMac/Application/PresenceRules.h"
#include "VornMac/Text/DoneText.h"
#include "VornMac/Text/UploadText.h"

#include <utility>

namespace vorn {

PresenceKeeper::PresenceKeeper(AppModel& model, DesktopPresence& presence, Window window)
    : model_(model), presence_(presence), window_(std::move(window))
{
    connect(&model_, &AppModel::uploadPhaseChanged, this, &PresenceKeeper::showUpload);
    connect(&model_, &AppModel::submissionChanged, this, &PresenceKeeper::followReview);
}

void PresenceKeeper::withdraw()
{
    if (std::exchange(hasNotified_, false)) presence_.withdrawNotification();
}

void PresenceKeeper::showUpload()
{
    const UploadPhase& phase = model_.uploadPhase();
    if (const bool awake = presence::staysAwake(phase); std::exchange(isAwake_, awake) != awake)
        awake ? presence_.stayAwake(uploadText(phase).title) : presence_.allowSleep();
    if (const auto percent = presence::percentOnIcon(phase); std::exchange(percent_, percent) != percent)
        presence_.showProgress(percent);
}

void PresenceKeeper::followReview()
{
    const auto before = std::exchange(submission_, model_.submission());
    if (!submission_) return withdraw(); // the session has ended: a review's outcome is private
    if (presence::isNewSubmission(before, submission_)) presence_.askToNotify();
    if (presence::isReviewed(before, submission_)) tellOutcome(*submission_);
}

void PresenceKeeper::tellOutcome(const SubmissionStatus& submission)
{
    const auto alert = presence::alertFor(
        submission.status, {.isWindowActive = window_.isActive(), .reducesMotion = window_.reducesMotion()});
    if (!alert.notifies) {
        if (alert.sounds) presence_.playSound();
        return;
    }
    OutcomeNotice notice = outcomeNotice({submission, model_.nimbrel(), model_.availability()});
    presence_.notify({.title = std::move(notice.title),
                      .body = std::move(notice.body),
                      .action = openVorn,
                      .hasSound = alert.sounds});
    hasNotified_ = true;
    window_.askForAttention();
}

} // namespace vorn
