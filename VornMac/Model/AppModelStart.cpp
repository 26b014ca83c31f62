#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Decisions.h"
#include "VornMac/Model/Timing.h"

#include <string>
#include <utility>

namespace vorn {

void AppModel::start()
{
    if (isRestored()) {
        const auto whole = transition();
        enter(step_);
    } else if (!restoreTask_.isRunning()) {
        restoreTask_ = running(runStart());
    }
}

Async<> AppModel::runStart()
{
    co_await restore();
    if (isRestored()) start();
}

void AppModel::continueSignedOut()
{
    if (std::holds_alternative<phase::Refused>(restorePhase_)) restored({});
}

Async<> AppModel::restore()
{
    if (isRestored()) co_return;
    const bool isAnotherTry = keychainRefusal_.has_value();
    keychainRefusal_.reset();
    // Another try must show something at once.
    setRestorePhase(isAnotherTry ? RestorePhase(phase::Waiting{}) : RestorePhase(phase::Loading{}));
    const Task slow(*services_.context, tellOfSlowKeychain());
    try {
        restored(co_await readSession());
    } catch (const Cancelled&) {
        throw;
    } catch (const KeychainError& refusal) {
        refuse(refusal);
    } catch (const std::exception&) { // no thread could be started
        refuse(KeychainError(KeychainError::notAvailable));
    }
}

Async<> AppModel::tellOfSlowKeychain()
{
    co_await services_.clock->sleep(timing::keychainIsSlow);
    setRestorePhase(phase::Waiting{});
}

Async<std::optional<StoredSession>> AppModel::readSession()
{
    const auto read = [store = services_.tokens] { return store->restore(); };
    return onBackgroundUnawaited(services_.patient != nullptr ? services_.patient : services_.background, read);
}

void AppModel::refuse(const KeychainError& refusal)
{
    log_.error(std::string("keychain read failed: ") + refusal.what());
    keychainRefusal_ = refusal;
    if (refusal.status() == KeychainError::notAvailable) return restored({}); // there is nothing to try again
    setRestorePhase(phase::Refused{});
}

void AppModel::restored(std::optional<StoredSession> session)
{
    const auto whole = transition();
    assign(session_, std::move(session), &AppModel::sessionChanged);
    assign(step_, firstStep(), &AppModel::stepChanged, Announcements::Place::first);
    setRestorePhase(phase::Idle{});
}

Step AppModel::firstStep() const
{
    if (!session_) return Step::link;
    return decide::stepAfterSignIn(hasAcceptedConsent(), probeAccess());
}

} // namespace vorn
