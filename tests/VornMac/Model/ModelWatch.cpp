#include "tests/VornMac/Model/ModelWatch.h"

#include <gtest/gtest.h>

namespace vorn::testing {

ModelWatch::ModelWatch(const AppModel& model) : model_(model), told_(ModelState::of(model))
{
    watch(&AppModel::stepChanged, &ModelState::step, "step");
    watch(&AppModel::sessionChanged, &ModelState::session, "session");
    watch(&AppModel::linkPhaseChanged, &ModelState::linkPhase, "linkPhase");
    watch(&AppModel::qrPayloadChanged, &ModelState::qrPayload, "qrPayload");
    watch(&AppModel::linkExpiresAtChanged, &ModelState::linkExpiresAt, "linkExpiresAt");
    watch(&AppModel::understandsUploadChanged, &ModelState::understandsUpload, "understandsUpload");
    watch(&AppModel::agreesToShareChanged, &ModelState::agreesToShare, "agreesToShare");
    watch(&AppModel::accessChanged, &ModelState::access, "access");
    watch(&AppModel::scanPhaseChanged, &ModelState::scanPhase, "scanPhase");
    watch(&AppModel::nimbrelChanged, &ModelState::nimbrel, "nimbrel");
    watch(&AppModel::exportResultChanged, &ModelState::exportResult, "exportResult");
    watch(&AppModel::uploadPhaseChanged, &ModelState::uploadPhase, "uploadPhase");
    watch(&AppModel::submissionChanged, &ModelState::submission, "submission");
}

template <class Value>
void ModelWatch::watch(void (AppModel::*signal)(), Value ModelState::* property, const std::string& name)
{
    connect(&model_, signal, this, [this, property, name] {
        const ModelState now = ModelState::of(model_);
        if (now.*property == told_.*property) problems_.push_back(name + " told of a change that was none");
        told_.*property = now.*property;
        generations_[name] = now.generation;
    });
}

std::vector<std::string> ModelWatch::problems()
{
    const ModelState now = ModelState::of(model_);
    told_.generation = now.generation; // which has no signal
    if (now != told_)
        problems_.push_back("told:" + ::testing::PrintToString(told_) + "but is:" + ::testing::PrintToString(now));
    return problems_;
}

std::int64_t ModelWatch::generationOf(const std::string& property) const
{
    const auto found = generations_.find(property);
    return found == generations_.end() ? 0 : found->second;
}

} // namespace vorn::testing
