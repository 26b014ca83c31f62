#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "Platform/Base/CancelFlag.h"
#include "Platform/Base/UUID.h"
#include "VornMac/Model/AppModel.h"
#include "VornMacCore/Identity/DeviceIdentity.h"
#include "VornMacCore/Upload/MultipartUploader.h"

#include <utility>

namespace vorn {
namespace {

constexpr const char* termsVersion = "vorn-mac-nimbrel-1";

/// Removes a file when it goes, if there is one.
class RemovedAtTheEnd {
public:
    RemovedAtTheEnd(FileManager* files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}
    ~RemovedAtTheEnd()
    {
        try {
            files_->remove(path_);
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the next start sweeps it
        }
    }
    RemovedAtTheEnd(RemovedAtTheEnd&&) = delete;

    const std::filesystem::path& path() const noexcept { return path_; }

private:
    FileManager* files_;
    std::filesystem::path path_;
};

} // namespace

struct AppModel::UploadJob {
    VornAPI api;
    std::int64_t generation;
    std::int64_t number; ///< of the job: once another has begun, this one reports nothing
    Export content;
};

void AppModel::upload()
{
    if (!canUpload() || !session_) return;
    const auto whole = transition();
    exportTask_ = {};
    go(Step::upload);
    uploadProgress_ = {};
    assign(uploadPhase_, {phase::Preparing{}}, &AppModel::uploadPhaseChanged);
    begin(exportTask_, runUpload({pinnedTo(*session_), sessionGeneration_, ++exportJobs_, export_}));
}

Async<> AppModel::runUpload(UploadJob job)
{
    const RemovedAtTheEnd archive(services_.files,
                                  services_.files->temporaryDirectory() / ("vorn-nimbrel-" + newUUID() + ".zip"));
    try {
        const ArchiveFile packed = co_await pack(job.content, archive.path());
        if (nimbrel_ && nimbrel_->maxBytes < packed.sizeBytes) {
            assign(uploadPhase_, {phase::Failed{"Your chat is larger than the upload limit."}},
                   &AppModel::uploadPhaseChanged);
            co_return;
        }
        assign(uploadPhase_, {phase::Uploading{0}}, &AppModel::uploadPhaseChanged);
        finishUpload(co_await send(job, archive.path()));
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        // Cancelled during its abort, which goes out nevertheless, a failed upload comes here and not to the above.
        if (job.number != exportJobs_) co_return;
        handleSessionError(error, job.generation);
        if (job.generation == sessionGeneration_)
            assign(uploadPhase_, {phase::Failed{describe(error)}}, &AppModel::uploadPhaseChanged);
    }
}

Async<ArchiveFile> AppModel::pack(Export content, std::filesystem::path path)
{
    const ExporterInfo exporter = ExporterInfo::current(services_.bundle);
    const auto write = [&, date = services_.clock->date(), files = services_.files](const CancelFlag& cancel) {
        return NimbrelArchiveBuilder::writeArchive(*content, exporter, path, date, *files, cancel);
    };
    co_return co_await onBackground(services_.background, write);
}

Async<SubmissionStatus> AppModel::send(UploadJob job, std::filesystem::path archive)
{
    const MultipartUploader uploader(job.api, services_.transfer, *services_.background);
    // Reports come on another thread, and the last ones when the upload, or the model, is gone.
    auto report = [context = services_.context, model = std::weak_ptr(alive_),
                   number = job.number](const UploadProgress& progress) {
        context->post([model, number, progress] {
            if (const auto alive = model.lock()) (*alive)->reportProgress(number, progress);
        });
    };
    co_return co_await uploader.upload(std::move(archive), termsVersion, currentDeviceSignals(), std::move(report));
}

void AppModel::reportProgress(std::int64_t job, const UploadProgress& progress)
{
    if (job != exportJobs_ || !std::holds_alternative<phase::Uploading>(uploadPhase_)) return;
    uploadProgress_ = progress;
    const double fraction = progress.fraction();
    assign(uploadPhase_, fraction >= 1 ? UploadPhase(phase::Finishing{}) : UploadPhase(phase::Uploading{fraction}),
           &AppModel::uploadPhaseChanged);
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
