#include "Tools/Terminal/ModelChanges.h"

#include <utility>

namespace vorn {

ModelChanges::ModelChanges(const AppModel& model)
{
    for (const auto signal :
         {&AppModel::stepChanged, &AppModel::sessionChanged, &AppModel::linkPhaseChanged, &AppModel::qrPayloadChanged,
          &AppModel::accessChanged, &AppModel::scanPhaseChanged, &AppModel::nimbrelChanged,
          &AppModel::uploadPhaseChanged, &AppModel::submissionChanged, &AppModel::copyPhaseChanged})
        connect(&model, signal, this, &ModelChanges::tell);
    connect(&model, &AppModel::stepChanged, this, [this] { reviewWatchEnded_ = false; });
    connect(&model, &AppModel::reviewWatchEnded, this, [this] {
        reviewWatchEnded_ = true;
        tell();
    });
}

void ModelChanges::tell()
{
    changed_ = true;
    if (const auto waiting = std::exchange(waiting_, std::nullopt)) (*waiting)();
}

Async<> ModelChanges::next()
{
    const auto wait = [this](const Resume<void>& resume) -> CancelAction {
        waiting_ = resume;
        return [this] { waiting_.reset(); };
    };
    if (!changed_) co_await suspend<void>(wait);
    changed_ = false;
}

} // namespace vorn
