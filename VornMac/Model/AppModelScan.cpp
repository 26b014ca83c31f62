#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Decisions.h"
#include "VornMac/Model/Timing.h"

#include <utility>

namespace vorn {
namespace {

/// Shares `result`, which is freed in the background whoever releases it last.
AppModel::ExportResult shared(NimbrelExportResult result, BackgroundExecutor* background)
{
    auto owned = std::make_unique<NimbrelExportResult>(std::move(result));
    return {owned.release(), [background](NimbrelExportResult* last) {
                background->post([kept = std::shared_ptr<NimbrelExportResult>(last)] {});
            }};
}

} // namespace

struct AppModel::FoundChat {
    ExportResult exportResult;
    NimbrelExportStats statistics;
};

std::optional<NimbrelExportStats> AppModel::exportStatistics() const
{
    return exportResult_ ? statistics_ : std::nullopt;
}

void AppModel::prefetchNimbrel()
{
    const auto whole = transition();
    setUnderstandsUpload(hasAcceptedConsent());
    setAgreesToShare(hasAcceptedConsent());
    jobs_.prefetch.cancel();
    if (session_) jobs_.prefetch = running(runPrefetch(pinnedTo(*session_)));
}

// Saves the find screen a wait. A failure is not shown: that screen asks again.
Async<> AppModel::runPrefetch(VornAPI api)
{
    try {
        const NimbrelState nimbrel = co_await api.nimbrelState();
        assign(nimbrel_, {nimbrel}, &AppModel::nimbrelChanged);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        if (!handleSessionError(error)) log_.error(std::string("nimbrel prefetch failed: ") + error.what());
    }
}

void AppModel::startAccessProbe()
{
    const auto whole = transition(); // a listener may leave the step on `granted`: the job must exist by then
    assign(access_, probeAccess(), &AppModel::accessChanged);
    accessTask_ = running(runAccessProbe());
}

Async<> AppModel::runAccessProbe()
{
    while (true) {
        co_await services_.clock->sleep(timing::accessProbeInterval);
        assign(access_, probeAccess(), &AppModel::accessChanged);
    }
}

void AppModel::stopAccessProbe()
{
    accessTask_.cancel();
    accessSeenTask_.cancel();
}

void AppModel::goOnOnceAccessIsSeen()
{
    if (step_ == Step::access) accessSeenTask_ = running(showAccess());
}

Async<> AppModel::showAccess()
{
    co_await services_.clock->sleep(timing::accessIsSeen);
    if (access_ == FullDiskAccessStatus::granted) go(Step::find);
}

void AppModel::scan()
{
    const auto whole = transition();
    jobs_.cancelChat();
    assign(scanPhase_, {phase::Loading{}}, &AppModel::scanPhaseChanged);
    if (session_) jobs_.chat = running(runScan(pinnedTo(*session_)));
}

Async<> AppModel::runScan(VornAPI api)
{
    try {
        co_await findChat(std::move(api));
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        showScanFailure(error);
    }
}

Async<> AppModel::findChat(VornAPI api)
{
    const NimbrelState nimbrel = co_await api.nimbrelState();
    {
        const auto whole = transition();
        assign(nimbrel_, {nimbrel}, &AppModel::nimbrelChanged);
        if (auto phase = decide::phaseBeforeReading(nimbrel)) {
            assign(scanPhase_, *std::move(phase), &AppModel::scanPhaseChanged);
            co_return;
        }
    }
    showFound(co_await readMessages(nimbrel.handles));
}

void AppModel::showFound(FoundChat found)
{
    const auto whole = transition();
    const bool hasMessages = !found.exportResult->messages.empty();
    statistics_ = found.statistics;
    assign(exportResult_, std::move(found.exportResult), &AppModel::exportResultChanged);
    jobs_.copy.cancel(); // otherwise it would pass for a copy of the new result
    assign(copyPhase_, {}, &AppModel::copyPhaseChanged);
    assign(scanPhase_, decide::phaseAfterReading(hasMessages), &AppModel::scanPhaseChanged);
}

Async<AppModel::FoundChat> AppModel::readMessages(std::vector<std::string> handles)
{
    const NimbrelExporter exporter(services_.messagesDatabase, NimbrelExporter::usualAttempts, *services_.files);
    const auto read = [&exporter, &handles, background = services_.background](const CancelFlag& cancel) {
        const ExportResult exportResult = shared(exporter.export_(handles, {}, cancel), background);
        return FoundChat{exportResult, exportResult->stats()};
    };
    co_return co_await onBackground(services_.background, read);
}

void AppModel::showScanFailure(const std::exception& error)
{
    handleSessionError(error);
    // Nothing is shown once the session has ended. If another program has linked another user, this session continues,
    // and the user who waits here must be told.
    if (!session_) return;
    const auto [phase, isLogged] = decide::failedScan(error);
    if (isLogged) log_.error(error.what());
    if (!phase) return go(Step::access);
    assign(scanPhase_, *phase, &AppModel::scanPhaseChanged);
}

void AppModel::openFullDiskAccessSettings()
{
    if (!services_.workspace->open(std::string(FullDiskAccess::settingsURL)))
        services_.workspace->open(std::string(FullDiskAccess::fallbackSettingsURL));
}

void AppModel::revealAppInFinder()
{
    services_.workspace->revealApplication();
}

void AppModel::relaunch()
{
    services_.workspace->relaunch();
}

} // namespace vorn
