#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "NimbrelExportKit/Messages/TemporaryNames.h"
#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"
#include "VornMac/Model/Decisions.h"
#include "VornMac/Model/Timing.h"
#include "VornMac/Text/Consent.h"
#include "VornMacCore/Client/MultipartUploader.h"
#include "VornMacCore/Wire/DeviceIdentity.h"

#include <utility>

namespace vorn {
namespace {

/// Removes the file, if there is one, at the end of its scope.
class TemporaryFile {
public:
    TemporaryFile(FileManager* files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}
    ~TemporaryFile()
    {
        try {
            files_->remove(path_);
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the next start sweeps it
        }
    }
    TemporaryFile(TemporaryFile&&) = delete;

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    FileManager* files_;
    std::filesystem::path path_;
};

} // namespace

void AppModel::upload()
{
    if (!canUpload() || !session_) return;
    const auto whole = transition();
    jobs_.cancelChat();
    go(Step::upload);
    uploadProgress_ = {};
    assign(uploadPhase_, {phase::Preparing{}}, &AppModel::uploadPhaseChanged);
    jobs_.progress = std::make_shared<AppModel*>(this);
    jobs_.chat = running(runUpload(pinnedTo(*session_), exportResult_));
}

Async<> AppModel::runUpload(VornAPI api, ExportResult exportResult)
{
    const auto began = services_.clock->now();
    try {
        const auto submission = co_await packAndSend(std::move(api), std::move(exportResult));
        if (!submission) co_return;
        const auto shownFor = services_.clock->now() - began;
        if (const auto rest = timing::uploadStaysFor(shownFor, services_.shortestUpload))
            co_await services_.clock->sleep(*rest);
        finishUpload(*submission);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        handleSessionError(error);
        if (session_) assign(uploadPhase_, {errorText(error)}, &AppModel::uploadPhaseChanged);
    }
}

Async<std::optional<SubmissionStatus>> AppModel::packAndSend(VornAPI api, ExportResult exportResult)
{
    const TemporaryFile archive(services_.files,
                                services_.files->temporaryDirectory() / temporarynames::archive.make());
    const ArchiveFile packed = co_await pack(std::move(exportResult), archive.path());
    if (decide::isTooLarge(packed.sizeBytes, nimbrel_)) {
        assign(uploadPhase_, {phase::Failed{archiveTooLarge}}, &AppModel::uploadPhaseChanged);
        co_return std::nullopt;
    }
    assign(uploadPhase_, {phase::Uploading{0}}, &AppModel::uploadPhaseChanged);
    co_return co_await send(std::move(api), archive.path());
}

Async<ArchiveFile> AppModel::pack(ExportResult exportResult, std::filesystem::path path)
{
    const ExporterInfo exporter = ExporterInfo::current(services_.bundle);
    const auto write = [&, date = services_.clock->date(), files = services_.files](const CancelFlag& cancel) {
        return NimbrelArchiveBuilder::writeArchive(*exportResult, exporter, path, date, *files, cancel);
    };
    co_return co_await onBackground(services_.background, write);
}

Async<SubmissionStatus> AppModel::send(VornAPI api, std::filesystem::path archive)
{
    const MultipartUploader uploader(std::move(api), services_.transfer, *services_.background);
    // Reports come from another thread, the last ones possibly after the upload has ended or the model is destroyed.
    auto report = [context = services_.context,
                   receiver = std::weak_ptr(jobs_.progress)](const UploadProgress& progress) {
        context->post([receiver, progress] {
            if (const auto model = receiver.lock()) (*model)->reportProgress(progress);
        });
    };
    CreateSubmissionRequest request{.termsVersion = Consent::termsVersion, .device = currentDeviceSignals()};
    co_return co_await uploader.upload(std::move(archive), std::move(request), std::move(report));
}

void AppModel::reportProgress(const UploadProgress& progress)
{
    auto phase = decide::phaseAfterProgress(uploadPhase_, progress);
    if (!phase) return;
    uploadProgress_ = progress;
    assign(uploadPhase_, *std::move(phase), &AppModel::uploadPhaseChanged);
}

void AppModel::finishUpload(const SubmissionStatus& status)
{
    const auto whole = transition();
    assign(submission_, {status}, &AppModel::submissionChanged);
    assign(uploadPhase_, {phase::Idle{}}, &AppModel::uploadPhaseChanged);
    go(Step::done);
    watchSubmission(status.id);
}

std::optional<QuestAvailability> AppModel::availability() const
{
    if (!nimbrel_) return std::nullopt;
    return QuestAvailability(nimbrel_->quest, services_.clock->date());
}

bool AppModel::canUpload() const
{
    const auto quest = availability();
    return std::holds_alternative<phase::Found>(scanPhase_) && quest && quest->canUpload();
}

} // namespace vorn
