#include "VornMac/Model/AppModel.h"

#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/Decisions.h"
#include "VornMac/Text/Consent.h"
#include "VornMac/Text/QuestText.h"
#include "VornMacCore/Wire/Application.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vorn {

AppModel::AppModel(AppServices services)
    : services_(std::move(services)), log_(bundleIdentifier(), "app"),
      access_(FullDiskAccess::probe(services_.messagesDatabase))
{
    if (services_.tokens->answersAtOnce())
        restored(services_.tokens->load());
    else
        restorePhase_ = phase::Loading{};
}

// Leaving `consent` or `find` stops nothing: their jobs outlive the screen.
AppModel::StepWork AppModel::workOf(Step step)
{
    static constexpr std::array table{
        StepWork{Step::link, &AppModel::startLinking, &AppModel::stopLinking},
        StepWork{Step::consent, &AppModel::prefetchNimbrel, nullptr},
        StepWork{Step::access, &AppModel::startAccessProbe, &AppModel::stopAccessProbe},
        StepWork{Step::find, &AppModel::scan, nullptr},
        StepWork{Step::done, nullptr, &AppModel::stopReviewWatch},
    };
    const auto row = std::ranges::find(table, step, &StepWork::step);
    return row == table.end() ? StepWork{step, nullptr, nullptr} : *row;
}

// The step's signal comes first: the screen that is left must not show the changes that follow.
void AppModel::go(Step target)
{
    const auto whole = transition();
    leave(step_);
    assign(step_, target, &AppModel::stepChanged, Announcements::Place::first);
    enter(target);
}

void AppModel::enter(Step step)
{
    if (const auto work = workOf(step).enter) (this->*work)();
}

void AppModel::leave(Step step)
{
    if (const auto work = workOf(step).leave) (this->*work)();
}

void AppModel::SessionJobs::cancelChat()
{
    chat.cancel();
    progress.reset();
}

void AppModel::SessionJobs::cancel()
{
    prefetch.cancel();
    cancelChat();
    review.cancel();
    copy.cancel();
}

bool AppModel::hasAcceptedConsent() const
{
    return session_ && services_.defaults->boolean(consentKey(session_->userId));
}

FullDiskAccessStatus AppModel::probeAccess() const
{
    return FullDiskAccess::probe(services_.messagesDatabase);
}

void AppModel::setUnderstandsUpload(bool value)
{
    assign(understandsUpload_, value, &AppModel::understandsUploadChanged);
}

void AppModel::setAgreesToShare(bool value)
{
    assign(agreesToShare_, value, &AppModel::agreesToShareChanged);
}

void AppModel::acceptConsent()
{
    if (!understandsUpload_ || !agreesToShare_ || !session_) return;
    services_.defaults->setBoolean(consentKey(session_->userId), true);
    go(decide::stepAfterConsent(probeAccess()));
}

VornAPI AppModel::pinnedTo(const StoredSession& session) const
{
    return services_.api.pinned(session.userId);
}

bool AppModel::handleSessionError(const std::exception& error)
{
    const auto trouble = decide::sessionTrouble(error);
    if (trouble == decide::SessionTrouble::none) return false;
    // If a session is stored, a newer sign-in has already replaced this one. If none is, the service refused the
    // session in another job, which was replaced before it could handle the refusal.
    if (trouble == decide::SessionTrouble::replaced && services_.tokens->load()) return true;
    // The store needs no clearing: the client has dropped the refused pair, and whatever is stored by now is a newer
    // pair of this user's or of another user's.
    leaveSession();
    return true;
}

std::optional<StoredSession> AppModel::endSession()
{
    auto stored = session_ ? services_.api.forget(session_->userId) : std::nullopt;
    leaveSession();
    return stored;
}

void AppModel::leaveSession()
{
    const auto whole = transition();
    ++sessionGeneration_;
    dropUser();
    go(Step::link);
}

void AppModel::dropUser()
{
    jobs_.cancel();
    assign(session_, {}, &AppModel::sessionChanged);
    assign(nimbrel_, {}, &AppModel::nimbrelChanged);
    assign(exportResult_, {}, &AppModel::exportResultChanged);
    assign(submission_, {}, &AppModel::submissionChanged);
    assign(scanPhase_, {}, &AppModel::scanPhaseChanged);
    assign(uploadPhase_, {}, &AppModel::uploadPhaseChanged);
    assign(copyPhase_, {}, &AppModel::copyPhaseChanged);
    setUnderstandsUpload(false);
    setAgreesToShare(false);
}

void AppModel::signOut()
{
    const auto own = session_;
    auto ended = endSession();
    if (!ended) ended = own;
    // Signing out never waits for the network.
    if (ended) Task::detached(*services_.context, services_.api.revoke(*std::move(ended)));
}

std::string AppModel::reward() const
{
    return rewardText(nimbrel_);
}

} // namespace vorn
