#include "NimbrelExportKit/Archive/NimbrelArchiveBuilder.h"
#include "Platform/Base/CancelFlag.h"
#include "VornMac/Model/AppModel.h"

#include <utility>

namespace vorn {

void AppModel::saveCopy(const std::filesystem::path& path)
{
    if (!exportResult_) return;
    assign(copyPhase_, {phase::Preparing{}}, &AppModel::copyPhaseChanged);
    jobs_.copy = running(runCopy(exportResult_, path));
}

Async<> AppModel::runCopy(ExportResult exportResult, std::filesystem::path path)
{
    try {
        co_await pack(std::move(exportResult), path);
        assign(copyPhase_, {phase::Saved{path.filename().string()}}, &AppModel::copyPhaseChanged);
    } catch (const Cancelled&) {
        throw;
    } catch (const std::exception& error) {
        log_.error("copy of the archive failed: " + systemReason(error));
        assign(copyPhase_, {phase::Failed{archiveNotWritten(path.string(), error)}}, &AppModel::copyPhaseChanged);
    }
}

} // namespace vorn
