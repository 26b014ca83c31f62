#include "NimbrelExportKit/Messages/NimbrelExporter.h"
#include "NimbrelExportKit/Records/NimbrelExportError.h"
#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Timing.h"
#include "VornMacCore/Client/APIError.h"

#include <utility>

namespace vorn {
namespace {

/// Shares `result`, and frees it in the background, whoever lets go of it last.
AppModel::Export shared(NimbrelExportResult result, BackgroundExecutor* background)
{
    auto owned = std::make_unique<NimbrelExportResult>(std::move(result));
    return {owned.release(), [background](NimbrelExportResult* last) {
                background->post([kept = std::shared_ptr<NimbrelExportResult>(last)] {});
            }};
}

} // namespace

struct AppModel::FoundChat {
    Export messages;
    NimbrelExportStats statistics;
};

std::optional<NimbrelExportStats> AppModel::exportStatistics() const
{
    return export_ ? statistics_ : std::nullopt;
}

void AppModel::prefetchNimbrel()
{
    const auto whole = transition();
    setUnderstandsUpload(hasAcceptedConsent());
    setAgreesToShare(hasAcceptedConsent());
    prefetchTask_ = {};
    if (session_) begin(prefetchTask_, runPrefetch(pinnedTo(*session_), sessionGeneration_));
}

// Saves the find screen a wait. It asks again itself, so that a failure here need not be shown.
Async<> AppModel::runPrefetch(VornAPI api, std::int64_t generation)
{
    try {
        const NimbrelState state = co_await api.nimbrelState();
        assign(nimbrel_, {state}, &AppModel::nimbrelChanged);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        if (!handleSessionError(error, generation)) log_.error(std::string("nimbrel prefetch failed: ") + error.what());
    }
}

void AppModel::startAccessProbe()
{
    const auto whole = transition(); // who hears of `granted` may leave the step, and stops the job by that
    assign(access_, FullDiskAccess::probe(services_.messagesDatabase), &AppModel::accessChanged);
    begin(accessTask_, runAccessProbe());
}

Async<> AppModel::runAccessProbe()
{
    while (true) {
        co_await services_.clock->sleep(timing::accessProbeInterval);
        assign(access_, FullDiskAccess::probe(services_.messagesDatabase), &AppModel::accessChanged);
    }
}

void AppModel::scan()
{
    const auto whole = transition();
    exportTask_ = {};
    ++exportJobs_;
    assign(scanPhase_, {phase::Loading{}}, &AppModel::scanPhaseChanged);
    if (session_) begin(exportTask_, runScan(pinnedTo(*session_), sessionGeneration_));
}

Async<> AppModel::runScan(VornAPI api, std::int64_t generation)
{
    try {
        co_await findChat(std::move(api));
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        showScanFailure(error, generation);
    }
}

Async<> AppModel::findChat(VornAPI api)
{
    const NimbrelState state = co_await api.nimbrelState();
    {
        const auto whole = transition();
        assign(nimbrel_, {state}, &AppModel::nimbrelChanged);
        if (state.handles.empty()) {
            assign(scanPhase_, {phase::NotConfigured{}}, &AppModel::scanPhaseChanged);
            co_return;
        }
    }
    showFound(co_await readMessages(state.handles));
}

void AppModel::showFound(FoundChat found)
{
    const auto whole = transition();
    const bool hasMessages = !found.messages->messages.empty();
    statistics_ = found.statistics;
    assign(export_, std::move(found.messages), &AppModel::exportResultChanged);
    assign(scanPhase_, hasMessages ? ScanPhase(phase::Found{}) : ScanPhase(phase::NotFound{}),
           &AppModel::scanPhaseChanged);
}

Async<AppModel::FoundChat> AppModel::readMessages(std::vector<std::string> handles)
{
    const NimbrelExporter exporter(services_.messagesDatabase, NimbrelExporter::usualAttempts, *services_.files);
    const auto read = [&exporter, &handles, background = services_.background](const CancelFlag& cancel) {
        const Export messages = shared(exporter.export_(handles, {}, cancel), background);
        return FoundChat{messages, messages->stats()};
    };
    co_return co_await onBackground(services_.background, read);
}

void AppModel::showScanFailure(const std::exception& error, std::int64_t generation)
{
    handleSessionError(error, generation);
    // The session has ended, and what is shown with it. It goes on where another program has linked somebody else: who
    // waits here has to hear of that.
    if (generation != sessionGeneration_) return;
    const auto show = [this](ScanPhase phase) { assign(scanPhase_, std::move(phase), &AppModel::scanPhaseChanged); };
    const auto* refusal = dynamic_cast<const APIError*>(&error);
    const auto* http = refusal != nullptr ? std::get_if<APIError::HTTP>(&refusal->reason()) : nullptr;
    if (http != nullptr && http->status == 404) return show(phase::Unavailable{});

    const auto* unread = dynamic_cast<const NimbrelExportError*>(&error);
    if (unread != nullptr && unread->is<NimbrelExportError::AccessDenied>()) return go(Step::access);
    if (unread != nullptr && unread->is<NimbrelExportError::Database>()) log_.error(unread->what());
    show(phase::Failed{describe(error)});
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
